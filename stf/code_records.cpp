#include "stf/code_records.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "input/input_state.h"
#include "stf/code_order.h"
#include "stf/stf_stream.h"
#include "store/code_table.h"
#include "store/records.h"

namespace scan695 {

namespace {

constexpr uint32_t BYTES_A_LINE = 32;
constexpr uint64_t END_OF_MEMORY = uint64_t{1} << 32;

// An upper-case digit; without a branch or a table, so that whole lines go at once.
char HexDigit(unsigned nibble) {
    return static_cast<char>(nibble + '0' + (nibble > 9) * ('A' - '9' - 1));
}

void WriteFullLine(const uint8_t* bytes) {
    char digits[2 * BYTES_A_LINE];
    for (size_t i = 0; i < BYTES_A_LINE; ++i) {
        digits[2 * i] = HexDigit(bytes[i] >> 4U);
        digits[2 * i + 1] = HexDigit(bytes[i] & 15U);
    }
    StfLine().Char('"').Text({digits, sizeof digits}).Char('"').End();
}

void WriteShortLine(const uint8_t* bytes, uint32_t count) {
    StfLine line;
    line.Char('"');
    for (uint32_t i = 0; i < count; ++i) line.Text({&UPPER_CASE[size_t{2} * bytes[i]], 2});
    line.Char('"').End();
}

void WriteChunk(const uint8_t* bytes, uint32_t size) {
    for (; size >= BYTES_A_LINE; size -= BYTES_A_LINE, bytes += BYTES_A_LINE) WriteFullLine(bytes);
    if (size != 0) WriteShortLine(bytes, size);
}

void WriteRow(const ChunkRow& row) {
    const CodeStretch& stretch = Stf.code[row.stretch];
    const uint8_t* bytes = Input.InputImage + stretch.offset;
    uint32_t place = ChunkStart(stretch, row.first) % stretch.size;
    for (uint32_t i = row.first; i < row.end; ++i) {
        const uint32_t size = std::min(MAX_CHUNK, stretch.size - place);
        WriteChunk(bytes + place, size);
        place += size;
        if (place == stretch.size) place = 0;
    }
}

// Rows that follow one another in the same memory: one record.
struct Run {
    std::vector<ChunkRow> rows;
    int32_t mem_type = 0;
    uint32_t address = 0;
    uint32_t size = 0;

    bool IsFollowedBy(int32_t other_mem_type, uint32_t other_address) const {
        return !rows.empty() && mem_type == other_mem_type && address + size == other_address;
    }
};

void WriteRun(int32_t number, const Run& run) {
    outBegin("Code", number);
    StfLine()
        .Text(run.mem_type == MEM_CODE ? "address=" : "address=data ")
        .Hex(run.address)
        .Char(';')
        .End();
    StfLine().Text("body=").Hex(run.size).End();
    for (const ChunkRow& row : run.rows) WriteRow(row);
    StfLine().Char(';').End();
    outEnd();
}

void AddStretch(const CodeStretch& stretch) {
    if (stretch.size != 0 && stretch.repeats != 0) Stf.code.push_back(stretch);
}

// Cuts a stretch that wraps in front of its first chunk that starts behind the end of the memory,
// which may be in the middle of a repetition.
void AddWrappingStretch(const CodeStretch& s) {
    const auto room = static_cast<uint32_t>(END_OF_MEMORY - s.address);
    const uint32_t whole = room / s.size;
    const uint32_t begun = room % s.size;  // bytes of the repetition in the middle
    const uint32_t head = std::min((begun + MAX_CHUNK - 1) / MAX_CHUNK * MAX_CHUNK, s.size);
    const uint32_t middle = s.address + whole * s.size;
    const uint32_t in_front = whole + (begun != 0 ? 1 : 0);
    AddStretch({s.address, s.size, whole, s.offset, s.mem_type});
    AddStretch({middle, head, 1, s.offset, s.mem_type});
    if (begun != 0) AddStretch({middle + head, s.size - head, 1, s.offset + head, s.mem_type});
    AddStretch({s.address + in_front * s.size, s.size, s.repeats - in_front, s.offset, s.mem_type});
}

}  // namespace

void outCodeAdd(int8_t mem_type, uint32_t address, const uint8_t* bytes, uint32_t size,
                uint32_t repeats) {
    if (size == 0) return;
    const auto offset = static_cast<uint32_t>(bytes - Input.InputImage);
    const CodeStretch stretch = {address, size, repeats, offset, mem_type};
    if (uint64_t{address} + uint64_t{size} * repeats > END_OF_MEMORY)
        AddWrappingStretch(stretch);
    else
        AddStretch(stretch);
}

void outCode() {
    CodeOrder order(Stf.code);
    Run run;
    int32_t number = 0;
    for (ChunkRow row = {}; order.Next(row);) {
        const CodeStretch& stretch = Stf.code[row.stretch];
        const uint32_t start = ChunkStart(stretch, row.first);
        if (!run.IsFollowedBy(stretch.mem_type, stretch.address + start)) {
            if (!run.rows.empty()) WriteRun(number++, run);
            run = {{}, stretch.mem_type, stretch.address + start, 0};
        }
        run.rows.push_back(row);
        run.size += ChunkStart(stretch, row.end) - start;
    }
    if (!run.rows.empty()) WriteRun(number, run);
    Stf.code = std::vector<CodeStretch>();
}

}  // namespace scan695
