// The data part and the Code records that come of it.

#include <algorithm>

#include "tests/support/test.h"

namespace scan695::test {
namespace {

// Two code segments at 0x1000 and 0x1010, a data segment at 0x1000.
Converted ConvertData(const Bytes& data) {
    const Bytes segments = Segment(1, Memory::CODE, "TEXT", 0x1000, 16) +
                           Segment(2, Memory::CODE, "MORE", 0x1010, 16) +
                           Segment(3, Memory::DATA, "DATA", 0x1000, 16);
    return ConvertBytes(Build({.segments = segments, .data = data}), true);
}

// The record of an address, a length and lines of bytes, all as they stand in the text.
std::string Code(int number, const std::string& address, const std::string& length,
                 const std::string& lines) {
    return "Code." + std::to_string(number) + "{\naddress=" + address + ";\nbody=" + length + "\n" +
           lines + ";\n}\n";
}

TEST(Load, CodeRecords) {
    Bytes counting;
    for (uint8_t i = 0; i <= 32; ++i) counting += Bytes{i};
    const std::string line32 =
        "\"000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F\"\n";
    // Each repetition begins a new line.
    std::string lines300 = "\"" + std::string(24, '1') + "\"\n";
    Bytes forty;  // at one address: a sort that is not stable mixes more than a few
    std::string forty_records;
    for (uint8_t i = 0; i < 40; ++i) {
        forty += UseSegment(1) + Load({static_cast<uint8_t>(0x10 + i)});
        char hex[8];
        std::snprintf(hex, sizeof hex, "\"%02X\"\n", 0x10 + i);
        forty_records += Code(i, "0x1000", "0x1", hex);
    }
    for (int i = 0; i < 9; ++i) lines300 = "\"" + std::string(64, '1') + "\"\n" + lines300;
    const struct {
        const char* what;
        Bytes data;
        std::string records;
    } cases[] = {
        {"nothing", UseSegment(1) + Load({}), ""},
        {"32 bytes", UseSegment(1) + Load(counting.First(32)), Code(0, "0x1000", "0x20", line32)},
        {"33 bytes", UseSegment(1) + Load(counting),
         Code(0, "0x1000", "0x21", line32 + "\"20\"\n")},
        {"neighbours merge, memories do not, memory sorts first",
         UseSegment(3) + Load({0xAA}) + UseSegment(2) + Load({0xBB}) + UseSegment(1) +
             Load(Times(16, {0xCC})),
         Code(0, "0x1000", "0x11", "\"" + std::string(32, 'C') + "\"\n\"BB\"\n") +
             Code(1, "data 0x1000", "0x1", "\"AA\"\n")},
        {"repeat", UseSegment(1) + Repeat(2) + Load(Times(300, {0x11})) + Load({0x01}),
         Code(0, "0x1000", "0x259", lines300 + lines300 + "\"01\"\n")},
        {"repeats of 0 and below 0 skip",
         UseSegment(1) + Repeat(0) + Load({0xE4}) + Repeat(-1) + Load({0xE4}) + Load({0x02}),
         Code(0, "0x1000", "0x1", "\"02\"\n")},
        {"repeat without number", UseSegment(1) + Repeat(Absent()) + Load({0x05}),
         Code(0, "0x1000", "0x1", "\"05\"\n")},
        {"load address keeps the memory", UseSegment(3) + LoadAt(1, 0x20) + Load({0x06}),
         Code(0, "data 0x20", "0x1", "\"06\"\n")},
        {"bytes before a segment", Load({0x07}), Code(0, "data 0x0", "0x1", "\"07\"\n")},
        {"the same address twice keeps the order",
         UseSegment(1) + Load({0x02}) + UseSegment(1) + Load({0x01}),
         Code(0, "0x1000", "0x1", "\"02\"\n") + Code(1, "0x1000", "0x1", "\"01\"\n")},
        {"forty at one address", forty, forty_records},
        {"data behind code at the next address",
         UseSegment(1) + Load({1}) + UseSegment(3) + LoadAt(3, 0x1001) + Load({2}),
         Code(0, "0x1000", "0x1", "\"01\"\n") + Code(1, "data 0x1001", "0x1", "\"02\"\n")},
        {"the end of the address space",
         UseSegment(1) + LoadAt(1, 0xFFFFFFFF) + Load({1, 2}) + Load({3}),
         Code(0, "0x1", "0x1", "\"03\"\n") + Code(1, "0xffffffff", "0x2", "\"0102\"\n")},
        {"unprocessed load record ends the part", Hex("E4") + UseSegment(1) + Load({1}), ""},
        {"E2 C7 ends the part", UseSegment(1) + Load({8}) + Hex("E2 C7 00"),
         Code(0, "0x1000", "0x1", "\"08\"\n")},
    };
    for (const auto& c : cases) {
        const Converted result = ConvertData(c.data);
        const std::string text = UnixLines(result.stf);
        EXPECT_EQ(result.status, 0) << c.what;
        EXPECT_EQ(text.substr(std::min(text.find("Code.0{"), text.size())), c.records) << c.what;
    }
}

}  // namespace
}  // namespace scan695::test
