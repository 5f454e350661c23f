#include "reader/primitives.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/support/object_builder.h"

namespace scan695::test {
namespace {

// Lays the cursor over bytes of the test.
void ReadFrom(Bytes& bytes) {
    Input = InputState();
    Input.InputImage = &bytes[0];
    Input.InputLength = static_cast<uint32_t>(bytes.size());
}

TEST(Primitives, ReadNumber) {
    const struct {
        const char* bytes;
        int result;
        uint32_t value;
        uint32_t cursor;
    } cases[] = {
        {"00", 1, 0, 1},
        {"7F", 1, 0x7F, 1},
        {"80 05", 0, 99, 1},
        {"81 FF", 1, 0xFF, 2},
        {"82 00 05", 1, 5, 3},
        {"83 01 02 03", 1, 0x010203, 4},
        {"84 01 02 03 04", 1, 0x01020304, 5},
        {"84 FF FF FF FC", 1, 0xFFFFFFFC, 5},
        {"89", 0, 99, 0},
        {"E5", 0, 99, 0},
    };
    for (const auto& c : cases) {
        Bytes bytes = Hex(c.bytes);
        ReadFrom(bytes);
        uint32_t value = 99;
        EXPECT_EQ(ReadNumber(value), c.result) << c.bytes;
        EXPECT_EQ(value, c.value) << c.bytes;
        EXPECT_EQ(Input.InputCursor, c.cursor) << c.bytes;
    }
}

TEST(Primitives, ReadName) {
    constexpr uint32_t size = 32;
    const struct {
        uint8_t length;
        uint32_t result;
        std::string text;
        uint32_t cursor;
    } cases[] = {
        {0, 0, "", 1},
        {31, 31, std::string(31, 'x'), 32},
        {32, 32, std::string(31, 'x'), 33},
        {127, 32, std::string(31, 'x'), 128},
        {0x80, 0, "old", 0},
        {0xF0, 0, "old", 0},
    };
    for (const auto& c : cases) {
        Bytes bytes = Bytes{c.length} + Times(127, {'x'});
        ReadFrom(bytes);
        char buffer[size] = "old";
        EXPECT_EQ(ReadName(buffer, size), c.result) << int{c.length};
        EXPECT_EQ(std::string(buffer), c.text) << int{c.length};
        EXPECT_EQ(Input.InputCursor, c.cursor) << int{c.length};
    }
}

}  // namespace
}  // namespace scan695::test
