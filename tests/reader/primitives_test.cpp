
#include "input/cursor.h"
#include "tests/support/test.h"

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
        uint32_t value, cursor;
    } cases[] = {
        {"7F", 1, 0x7F, 1},
        {"80 05", 0, 99, 1},
        {"81 FF", 1, 0xFF, 2},
        {"82 00 05", 1, 5, 3},
        {"83 01 02 03", 1, 0x010203, 4},
        {"84 FF FF FF FC", 1, 0xFFFFFFFC, 5},
        {"89", 0, 99, 0},
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
    const std::string most(31, 'x');
    const struct {
        uint8_t length;
        uint32_t result, cursor;
        std::string text;
    } cases[] = {{0, 0, 1, ""},        {31, 31, 32, most},  {32, 32, 33, most},
                 {127, 32, 128, most}, {0x80, 0, 0, "old"}, {0xF0, 0, 0, "old"}};
    for (const auto& c : cases) {
        Bytes bytes = Bytes{c.length} + Times(127, {'x'});
        ReadFrom(bytes);
        char buffer[32] = "old";
        EXPECT_EQ(ReadName(buffer, sizeof buffer), c.result) << int{c.length};
        EXPECT_EQ(std::string(buffer), c.text) << int{c.length};
        EXPECT_EQ(Input.InputCursor, c.cursor) << int{c.length};
    }
}

}  // namespace
}  // namespace scan695::test
