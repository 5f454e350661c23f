#include "stf/code_records.h"

#include <algorithm>
#include <vector>

#include "stf/stf_stream.h"

namespace scan695 {

namespace {

constexpr uint32_t BYTES_A_LINE = 32;

// An upper-case digit; without a branch or a table, so that whole lines go at once.
char HexDigit(unsigned nibble) {
    return static_cast<char>(nibble + '0' + (nibble > 9) * ('A' - '9' - 1));
}

bool Before(const CodeChunk& a, const CodeChunk& b) {
    return a.mem_type != b.mem_type ? a.mem_type < b.mem_type : a.address < b.address;
}

// One line of up to 32 bytes.
void WriteDataLine(const uint8_t* bytes, uint32_t count) {
    char digits[2 * BYTES_A_LINE];
    for (size_t i = 0; i < count; ++i) {
        digits[2 * i] = HexDigit(bytes[i] >> 4U);
        digits[2 * i + 1] = HexDigit(bytes[i] & 15U);
    }
    StfLine().Char('"').Text({digits, 2 * size_t{count}}).Char('"').End();
}

void WriteData(const CodeChunk& entry) {
    for (uint32_t done = 0; done < entry.size; done += BYTES_A_LINE)
        WriteDataLine(entry.bytes + done, std::min(BYTES_A_LINE, entry.size - done));
}

// Writes the run of entries [first, last) as record `number`; `size` bytes in all.
void WriteRun(int32_t number, const CodeChunk* first, const CodeChunk* last, uint32_t size) {
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

void outCodeAdd(const CODEINFO& record, const uint8_t* bytes) {
    if (record.length == 0) return;
    Stf.code.push_back(
        {static_cast<int8_t>(record.mem_type), record.address, record.length, bytes});
}

void outCode() {
    // Equal entries keep the order of the input.
    std::vector<CodeChunk>& entries = Stf.code;
    if (!std::is_sorted(entries.begin(), entries.end(), Before))
        std::stable_sort(entries.begin(), entries.end(), Before);
    int32_t number = 0;
    const CodeChunk* end = entries.data() + entries.size();
    for (const CodeChunk* first = entries.data(); first != end;) {
        const CodeChunk* next = first + 1;
        uint32_t size = first->size;
        while (next != end && next->mem_type == first->mem_type &&
               next->address == first->address + size)
            size += next++->size;
        WriteRun(number++, first, next, size);
        first = next;
    }
    entries = {};
}

}  // namespace scan695
