// The builder against bytes written by hand.

#include <stdexcept>

#include "tests/support/test.h"

namespace scan695::test {
namespace {

TEST(ObjectBuilder, NumbersAndNames) {
    const struct {
        Bytes built;
        const char* expected;
    } cases[] = {
        {Num(0x7F), "7F"},
        {Num(0x80), "81 80"},
        {Num(0x100), "82 01 00"},
        {Num(0x10000), "83 01 00 00"},
        {Num(-4), "84 FF FF FF FC"},
        {Num(int64_t{1} << 31), "84 80 00 00 00"},
        {Wide(5, 4), "84 00 00 00 05"},
        {Wide(0x01020304, 8), "88 00 00 00 00 01 02 03 04"},
        {Omitted(), "80"},
        {Absent(), ""},
        {Numbers(1, Absent(), 0x90), "01 81 90"},
        {Text("abc"), "03 'abc'"},
        {Text(Bytes{}), ""},
    };
    for (const auto& [built, expected] : cases) EXPECT_EQ(built, Hex(expected)) << expected;
}

TEST(ObjectBuilder, HexText) {
    EXPECT_EQ(Hex("f0 20n'a b'\n'#x' # FF\n 1a"),
              (Bytes{0xF0, 0x20, 3, 'a', ' ', 'b', '#', 'x', 0x1A}));
    for (const char* bad : {"F", "G0", "0G", "'abc", "n", "F 0"}) {
        EXPECT_THROW(Hex(bad), std::invalid_argument) << bad;
    }
}

}  // namespace
}  // namespace scan695::test
