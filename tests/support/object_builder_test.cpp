// The builder against bytes written by hand.
#include "tests/support/object_builder.h"

#include <gtest/gtest.h>

#include <stdexcept>

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

TEST(ObjectBuilder, OffsetsLeadToTheParts) {
    const ObjectFile file = {.processor = "TRI",
                             .module = "m",
                             .debug = Times(300, {0xF8}),
                             .data = {0xE5, 0x01},
                             .order = {Part::kModuleEnd, Part::kData, Part::kDebug},
                             .offsets = {{Part::kTrailer, Wide(0x7F, 1)}, {Part::kData, Absent()}}};
    const Bytes header =
        Hex("E0 n'TRI' n'm' EC 08 04 CC"
            "E2 D7 00 84 00 00 00 00  E2 D7 01 84 00 00 00 00"
            "E2 D7 02 84 00 00 00 00  E2 D7 03 84 00 00 00 00"
            "E2 D7 04 84 00 00 00 46  E2 D7 05"
            "E2 D7 06 81 7F           E2 D7 07 84 00 00 00 43");
    EXPECT_EQ(Build(file), header + Hex("E1 E5 01") + Times(300, {0xF8}));
    EXPECT_EQ(PartOffset(file, Part::kDebug), header.size() + 3);
}

// Readers do not look at the lengths, from F8 to behind the tail.
TEST(ObjectBuilder, BlockLengths) {
    EXPECT_EQ(Bb3("M", Bb4({.name = "f", .stack = 2, .type = 0x101, .begin = 0x200, .end = 0x21F})),
              Hex("F8 03 84 00 00 00 1E n'M'"
                  "   F8 04 84 00 00 00 14 n'f' 02 82 01 01 82 02 00 F9 82 02 1F"
                  "F9"));
}

}  // namespace
}  // namespace scan695::test
