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
        {Num(0), "00"},
        {Num(0x7F), "7F"},
        {Num(0x80), "81 80"},
        {Num(0xFF), "81 FF"},
        {Num(0x100), "82 01 00"},
        {Num(0x10000), "83 01 00 00"},
        {Num(0x12345678), "84 12 34 56 78"},
        {Num(-4), "84 FF FF FF FC"},
        {Num(int64_t{1} << 31), "84 80 00 00 00"},
        {Wide(5, 1), "81 05"},
        {Wide(0x123456, 2), "82 34 56"},
        {Wide(5, 4), "84 00 00 00 05"},
        {Wide(0x01020304, 8), "88 00 00 00 00 01 02 03 04"},
        {Omitted(), "80"},
        {Absent(), ""},
        {Numbers(1, Absent(), 0x90), "01 81 90"},
        {Text("abc"), "03 'abc'"},
        {Text(""), "00"},
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
    ObjectFile file = {.processor = "TRI",
                       .module = "m",
                       .debug = Times(300, {0xF8}),
                       .data = {0xE5, 0x01},
                       .order = {Part::kModuleEnd, Part::kData, Part::kDebug}};
    const Bytes image = Build(file);
    const Bytes start = Hex("E0 n'TRI' n'm' EC 08 04 CC");
    const size_t header = start.size() + 8 * (3 + 5);
    EXPECT_EQ(image.First(start.size()), start);
    EXPECT_EQ(image.size(), header + 1 + 2 + 300);
    EXPECT_EQ(PartOffset(file, Part::kModuleEnd), header);
    EXPECT_EQ(PartOffset(file, Part::kData), header + 1);
    EXPECT_EQ(PartOffset(file, Part::kDebug), header + 3);
    EXPECT_EQ(PartOffset(file, Part::kTrailer), 0u);
    EXPECT_EQ(image[header], 0xE1);
    EXPECT_EQ(image[header + 1], 0xE5);

    // Numbers of other lengths in the header move the parts.
    file.offsets = {{Part::kTrailer, Wide(0x7F, 1)}, {Part::kData, Absent()}};
    EXPECT_EQ(PartOffset(file, Part::kDebug), header + 3 - 3 - 5);
}

TEST(ObjectBuilder, BlockLengthsCountFromF8ToBehindTheTail) {
    EXPECT_EQ(Bb1("M", {}), Hex("F8 01 84 00 00 00 0A n'M' F9"));
    EXPECT_EQ(Bb3("M", Bb4({.name = "f", .stack = 2, .type = 0x101, .begin = 0x200, .end = 0x21F})),
              Hex("F8 03 84 00 00 00 1E n'M'"
                  "   F8 04 84 00 00 00 14 n'f' 02 82 01 01 82 02 00 F9 82 02 1F"
                  "F9"));
}

TEST(ObjectBuilder, TypeDefinitionsNest) {
    EXPECT_EQ(NamedType(0x80, "s", 0x100,
                        def::Struct(6, {{"a", def::LargePointer(0x101), 0},
                                        {"b", def::Array(16, 1), Wide(2, 2)}})),
              Hex("F0 81 80 n's' F2 82 01 00 CE 81 80 'S' 06 n'a' 'P' 82 01 01 00 n'b' 'Z' 10 01 "
                  "82 00 02 00"));
    EXPECT_EQ(def::Function({.returns = 16}).bytes, Hex("'x' 08 00 00 10 84 FF FF FF FF 00"));
    EXPECT_EQ(def::Function({.parameters = {5, def::Bitfield(0, 3)}}).bytes,
              Hex("'x' 08 00 00 00 02 05 'g' 00 03 10 00"));
    EXPECT_EQ(def::Enum({{"A", -1}}, EnumSize(1)).bytes, Hex("'N' 00 01 n'A' 84 FF FF FF FF 00"));
}

TEST(ObjectBuilder, LifetimesBringTheirNamelessNn) {
    EXPECT_EQ(Lifetime(0x46, 0x10, 0x20, 2, 0x1018),
              Hex("F0 46 00 F1 CE 46 00 3F 46 03 E2 CE 46 20 E2 CE 46 0A E2 CE 46 82 10 18"
                  "F0 46 00 F1 CE 46 00 3F 46 03 E2 CE 46 10 E2 CE 46 02 E2 CE 46 82 10 18"));
}

}  // namespace
}  // namespace scan695::test
