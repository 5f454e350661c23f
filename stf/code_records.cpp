#include "stf/code_records.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "stf/stf_stream.h"

namespace scan695 {

namespace {

constexpr uint32_t BYTES_A_LINE = 32;

struct CodeEntry {
    int32_t mem_type;  // the memory type byte, widened with its sign
    uint32_t address;
    uint32_t size;
    const uint8_t* bytes;  // in the image of the input
};

struct CodeState {
    std::vector<CodeEntry> entries;
    uint64_t bytes = 0;
};
CodeState Code;

// Two upper-case digits for each byte value.
struct HexPairs {
    char digits[256][2];
    constexpr HexPairs() : digits() {
        for (unsigned i = 0; i < 256; ++i) {
            digits[i][0] = "0123456789ABCDEF"[i >> 4];
            digits[i][1] = "0123456789ABCDEF"[i & 15];
        }
    }
};
constexpr HexPairs HEX_PAIRS;

bool Before(const CodeEntry& a, const CodeEntry& b) {
    return a.mem_type != b.mem_type ? a.mem_type < b.mem_type : a.address < b.address;
}

// One line of up to 32 bytes, composed in the text buffer of the stream.
void WriteDataLine(const uint8_t* bytes, uint32_t count) {
    char line[2 * BYTES_A_LINE + 2];
    char* out = line;
    *out++ = '"';
    for (uint32_t i = 0; i < count; ++i, out += 2) std::memcpy(out, HEX_PAIRS.digits[bytes[i]], 2);
    *out++ = '"';
    StfLine().Text({line, static_cast<size_t>(out - line)}).End();
}

void WriteData(const CodeEntry& entry) {
    for (uint32_t done = 0; done < entry.size; done += BYTES_A_LINE)
        WriteDataLine(entry.bytes + done, std::min(BYTES_A_LINE, entry.size - done));
}

// Writes the run of entries [first, last) as record `number`; `size` bytes in all.
void WriteRun(int32_t number, const CodeEntry* first, const CodeEntry* last, uint32_t size) {
    outBegin("Code", number);
    StfLine()
        .Text(first->mem_type == MEM_CODE ? "address=" : "address=data ")
        .Hex(first->address)
        .Char(';')
        .End();
    StfLine().Text("body=").Hex(size).End();
    for (; first != last; ++first) WriteData(*first);
    StfLine().Char(';').End();
    outEnd();
}

}  // namespace

void outCodeStart() {
    Code = CodeState();
}

void outCodeAdd(const CODEINFO& record, const uint8_t* bytes) {
    if (record.length == 0) return;
    Code.entries.push_back(
        {static_cast<int8_t>(record.mem_type), record.address, record.length, bytes});
    Code.bytes += record.length;
}

uint64_t outCodeBytes() {
    return Code.bytes;
}

void outCode() {
    // Equal entries keep the order of the input.
    std::vector<CodeEntry>& entries = Code.entries;
    if (!std::is_sorted(entries.begin(), entries.end(), Before))
        std::stable_sort(entries.begin(), entries.end(), Before);
    int32_t number = 0;
    const CodeEntry* end = entries.data() + entries.size();
    for (const CodeEntry* first = entries.data(); first != end;) {
        const CodeEntry* next = first + 1;
        uint32_t size = first->size;
        while (next != end && next->mem_type == first->mem_type &&
               next->address == first->address + size)
            size += next++->size;
        WriteRun(number++, first, next, size);
        first = next;
    }
    outCodeStart();
}

}  // namespace scan695
