#include "store/code_table.h"

#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

// Heads of the chunks of `size` bytes, `repeats` times.
uint64_t NofHeads(uint32_t size, uint32_t repeats) {
    return (uint64_t{size} + MAX_CHUNK - 1) / MAX_CHUNK * repeats;
}

// Of the CodeTable: a head and the bytes of every chunk so far.
uint64_t CodeTableSize() {
    return Store.code_bytes + uint64_t{sizeof(CODEINFO)} * Store.Header.nof_code;
}

// Whether the table can take that many heads and bytes more.
bool HasRoom(uint64_t heads, uint64_t bytes) {
    return CodeTableSize() + heads * sizeof(CODEINFO) + bytes <= ChunkFile::MAX_SIZE;
}

}  // namespace

void AddToCodeTable(const CODEINFO& record, const uint8_t* bytes) {
    AppendRecord(Store.CodeTable, record);
    AppendRecordBytes(Store.CodeTable, bytes, record.length);
    Store.code_bytes += record.length;
    ++Store.Header.nof_code;
}

void CountInCodeTable(uint32_t size, uint32_t repeats) {
    const uint64_t heads = NofHeads(size, repeats);
    const uint64_t bytes = uint64_t{size} * repeats;
    if (!HasRoom(heads, bytes)) ReportAndStop(ERROR_NO_MEMORY);
    Store.code_bytes += bytes;
    Store.Header.nof_code += static_cast<uint32_t>(heads);
}

void RequireRoomForCode(uint32_t size, uint32_t repeats) {
    const uint64_t bytes = uint64_t{size} * repeats;
    // The table keeps a head with every chunk. It counts where repeats multiply what the input
    // holds.
    if (Store.code_bytes + bytes > ChunkFile::MAX_SIZE ||
        (repeats > 1 && !HasRoom(NofHeads(size, repeats), bytes)))
        ReportAndStop(ERROR_NO_MEMORY);
}

}  // namespace scan695
