// Text without regard to case, and numbers as text, at the edges of their alphabets.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "base/number_text.h"
#include "base/text_case.h"

namespace scan695::test {
namespace {

TEST(TextCase, LettersAreAToZ) {
    std::string text = "@AZ[`az{\xE4\x7F\x80_09";
    UpperCaseInPlace(text.data());
    EXPECT_EQ(text, "@AZ[`AZ{\xE4\x7F\x80_09");
    const struct {
        const char *a, *b;
        int order;
    } cases[] = {
        {"az", "AZ", 0}, {"AZ", "az", 0}, {"@", "`", -1},  {"[", "{", -1},   {"Z", "[", 1},
        {"a", "_", 1},   {"A", "B", -1},  {"a", "ab", -1}, {"\xE4", "z", 1}, {"", "", 0},
    };
    const auto sign = [](int order) { return (order > 0) - (order < 0); };
    for (const auto& c : cases) {
        EXPECT_EQ(sign(CompareNoCase(c.a, c.b)), c.order) << c.a << c.b;
        EXPECT_EQ(sign(CompareNoCase(c.b, c.a)), -c.order) << c.a << c.b;
        EXPECT_EQ(CompareNoCase(c.a, c.b, 0), 0);
    }
    EXPECT_EQ(CompareNoCase("abX", "ABy", 2), 0);
    EXPECT_LT(CompareNoCase("abX", "ABy", 3), 0);
    EXPECT_EQ(CompareNoCase("ab", "AB", 9), 0);
}

TEST(NumberText, AtTheEnds) {
    char text[MAX_NUMBER_TEXT];
    for (const int32_t value : {0, 9, 10, 99, 100, -1, -10, INT_MAX, INT_MIN})
        EXPECT_EQ(std::string(text, DecimalText(text, value)), std::to_string(value));
    EXPECT_EQ(std::string(text, HexText(text, 0)), "0");
    EXPECT_EQ(std::string(text, HexText(text, 0x9A0F)), "9a0f");
    EXPECT_EQ(std::string(text, HexText(text, 0xFFFFFFFF)), "ffffffff");
}

}  // namespace
}  // namespace scan695::test
