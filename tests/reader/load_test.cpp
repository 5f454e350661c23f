// The data part and the Code records that come of it.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/convert.h"
#include "tests/support/object_builder.h"

namespace scan695::test {
namespace {

// Two code segments at 0x1000 and 0x1010, a data segment at 0x1000.
const Bytes SEGMENTS = Segment(1, Memory::kCode, "TEXT", 0x1000, 16) +
                       Segment(2, Memory::kCode, "MORE", 0x1010, 16) +
                       Segment(3, Memory::kData, "DATA", 0x1000, 16);

Converted ConvertData(const Bytes& data, bool debug = false) {
    return ConvertBytes(Build({.segments = SEGMENTS, .data = data}), debug);
}

std::string CodeRecords(const Converted& result) {
    const std::string text = UnixLines(result.stf);
    const size_t begin = text.find("Code.0{");
    return begin == std::string::npos ? "" : text.substr(begin);
}

Bytes Counting(size_t count) {
    Bytes bytes;
    for (size_t i = 0; i < count; ++i) bytes += Bytes{static_cast<uint8_t>(i)};
    return bytes;
}

TEST(Load, CodeRecords) {
    const std::string line32 =
        "\"000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F\"\n";
    const struct {
        const char* what;
        Bytes data;
        std::string records;
    } cases[] = {
        {"nothing", UseSegment(1) + Load({}), ""},
        {"32 bytes", UseSegment(1) + Load(Counting(32)),
         "Code.0{\naddress=0x1000;\nbody=0x20\n" + line32 + ";\n}\n"},
        {"33 bytes", UseSegment(1) + Load(Counting(33)),
         "Code.0{\naddress=0x1000;\nbody=0x21\n" + line32 + "\"20\"\n;\n}\n"},
        {"neighbours merge, memories do not, memory sorts first",
         UseSegment(3) + Load({0xAA}) + UseSegment(2) + Load({0xBB}) + UseSegment(1) +
             Load(Times(16, {0xCC})),
         "Code.0{\naddress=0x1000;\nbody=0x11\n\"CCCCCCCCCCCCCCCCCCCCCCCCCCCCCCCC\"\n\"BB\"\n;\n}\n"
         "Code.1{\naddress=data 0x1000;\nbody=0x1\n\"AA\"\n;\n}\n"},
        {"repeat", UseSegment(1) + Repeat(3) + Load({0xFF}) + Load({0x01}),
         "Code.0{\naddress=0x1000;\nbody=0x4\n\"FF\"\n\"FF\"\n\"FF\"\n\"01\"\n;\n}\n"},
        {"repeats of 0 and below 0 skip",
         UseSegment(1) + Repeat(0) + Load({0xE4}) + Repeat(-1) + Load({0xE4}) + Load({0x02}),
         "Code.0{\naddress=0x1000;\nbody=0x1\n\"02\"\n;\n}\n"},
        {"repeat without number", UseSegment(1) + Repeat(Absent()) + Load({0x05}),
         "Code.0{\naddress=0x1000;\nbody=0x1\n\"05\"\n;\n}\n"},
        {"load address keeps the memory", UseSegment(3) + LoadAt(1, 0x20) + Load({0x06}),
         "Code.0{\naddress=data 0x20;\nbody=0x1\n\"06\"\n;\n}\n"},
        {"bytes before a segment", Load({0x07}),
         "Code.0{\naddress=data 0x0;\nbody=0x1\n\"07\"\n;\n}\n"},
        {"the same address twice keeps the order",
         UseSegment(1) + Load({0x02}) + UseSegment(1) + Load({0x01}),
         "Code.0{\naddress=0x1000;\nbody=0x1\n\"02\"\n;\n}\n"
         "Code.1{\naddress=0x1000;\nbody=0x1\n\"01\"\n;\n}\n"},
        {"the end of the address space",
         UseSegment(1) + LoadAt(1, 0xFFFFFFFF) + Load({1, 2}) + Load({3}),
         "Code.0{\naddress=0x1;\nbody=0x1\n\"03\"\n;\n}\n"
         "Code.1{\naddress=0xffffffff;\nbody=0x2\n\"0102\"\n;\n}\n"},
        {"unprocessed load record ends the part", Hex("E4") + UseSegment(1) + Load({1}), ""},
        {"E2 C7 ends the part", UseSegment(1) + Load({8}) + Hex("E2 C7 00"),
         "Code.0{\naddress=0x1000;\nbody=0x1\n\"08\"\n;\n}\n"},
    };
    for (const auto& c : cases) {
        const Converted result = ConvertData(c.data);
        EXPECT_EQ(result.status, 0) << c.what;
        EXPECT_EQ(CodeRecords(result), c.records) << c.what;
    }
}

TEST(Load, ChunksAreCutForEachRepetition) {
    const Converted result =
        ConvertData(UseSegment(1) + Repeat(2) + Load(Times(300, {0x11})), true);
    std::string lines;  // bytes of each data line, in digits
    size_t at = 0;
    while ((at = result.stf.find('"', at)) != std::string::npos) {
        const size_t end = result.stf.find('"', at + 1);
        if (result.stf.compare(at, 3, "\"11") == 0) lines += std::to_string((end - at) / 2) + " ";
        at = end + 1;
    }
    const std::string one = "32 32 32 32 32 32 32 32 32 12 ";
    EXPECT_EQ(lines, one + one);
    EXPECT_NE(result.console.find("Repeat 2 times:\nCode: addr=00001000 size=300\n"
                                  "Code: addr=0000112C size=300\n"),
              std::string::npos);
}

TEST(Load, Stops) {
    const struct {
        const char* what;
        Bytes data;
        const char* message;
    } cases[] = {
        {"first record", Hex("E8"), "Unexpected record at"},
        {"E2 C7 first", Hex("E2 C7 00"), "Unexpected record at"},
        {"other assignment", UseSegment(1) + Hex("E2 D1 00"), "Unexpected record at"},
        {"no count", Hex("ED ED"), "Unexpected record at"},
        {"more bytes than the file has", UseSegment(1) + LoadCounted(0x100000, {1}),
         "Unexpected end of file at"},
        {"2^31 bytes", UseSegment(1) + LoadCounted(Num(0x80000000), {1}),
         "Error: not enough memory\n"},
        {"repeats beyond 2^31 bytes", UseSegment(1) + Repeat(0x7FFFFFFF) + Load({1, 2}),
         "Error: not enough memory\n"},
    };
    for (const auto& c : cases) {
        const Converted result = ConvertData(c.data);
        EXPECT_EQ(result.status, 1) << c.what;
        EXPECT_NE(result.console.find(c.message), std::string::npos) << c.what << result.console;
    }
}

}  // namespace
}  // namespace scan695::test
