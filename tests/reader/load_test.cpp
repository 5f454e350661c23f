// The data part and the Code records that come of it.

#include <algorithm>
#include <random>

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

struct PlainChunk {
    bool data;
    uint32_t address;
    std::string lines;
    uint32_t size;
};

// Adds the chunks of a load record one by one.
void AddPlain(std::vector<PlainChunk>& chunks, bool data, uint32_t address, const Bytes& bytes) {
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (i % 256 == 0) chunks.push_back({data, address + static_cast<uint32_t>(i), "", 0});
        PlainChunk& chunk = chunks.back();
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02X", bytes[i]);
        if (chunk.size % 32 == 0) chunk.lines += "\"";
        chunk.lines += digits;
        if (++chunk.size % 32 == 0 || i + 1 == bytes.size()) chunk.lines += "\"\n";
    }
}

std::string PlainCode(std::vector<PlainChunk> chunks) {
    std::ranges::stable_sort(
        chunks, {}, [](const PlainChunk& chunk) { return std::pair(chunk.data, chunk.address); });
    std::string text;
    int number = 0;
    for (size_t i = 0; i < chunks.size();) {
        PlainChunk run = chunks[i];
        while (++i < chunks.size() && chunks[i].data == run.data &&
               chunks[i].address == run.address + run.size) {
            run.size += chunks[i].size;
            run.lines += chunks[i].lines;
        }
        char place[32];
        char size[16];
        std::snprintf(place, sizeof place, "%s0x%x", run.data ? "data " : "", run.address);
        std::snprintf(size, sizeof size, "0x%x", run.size);
        text += Code(number++, place, size, run.lines);
    }
    return text;
}

// Repeats over one another and over the end of the address space.
TEST(Load, AgainstAPlainSort) {
    std::mt19937 generator(695);
    const auto random = [&generator] { return static_cast<uint32_t>(generator()); };
    for (int round = 0; round < 150; ++round) {
        Bytes records;
        std::vector<PlainChunk> chunks;
        const uint32_t base = round % 2 == 0 ? 0x1000 : 0xFFFFFFF0 - random() % 300;
        for (int i = 0; i < 5; ++i) {
            const bool data = random() % 4 == 0;
            const uint32_t address = base + random() % 24;
            const uint32_t times = 1 + random() % 6;
            const size_t size = random() % 3 == 0 ? random() % 600 : 1 + random() % 4;
            const Bytes bytes = Times(size, {static_cast<uint8_t>(random())});
            records += UseSegment(data ? 3 : 1) + LoadAt(1, address) + Repeat(times) + Load(bytes);
            for (uint32_t k = 0; k < times; ++k)
                AddPlain(chunks, data, address + k * static_cast<uint32_t>(size), bytes);
        }
        const std::string text = UnixLines(ConvertData(records).stf);
        ASSERT_EQ(text.substr(std::min(text.find("Code.0{"), text.size())), PlainCode(chunks))
            << round;
    }
}

}  // namespace
}  // namespace scan695::test
