#include "store/code_table.h"

#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

// Of the CodeTable: a head and the bytes of every chunk so far.
uint64_t CodeTableSize() {
    return Store.code_bytes + uint64_t{sizeof(CODEINFO)} * Store.Header.nof_code;
}

}  // namespace

void AddToCodeTable(const CODEINFO& record, const uint8_t* bytes) {
    if (Report.DebugMode != 0) {
        AppendRecord(Store.CodeTable, record);
        AppendRecordBytes(Store.CodeTable, bytes, record.length);
    } else if (CodeTableSize() + sizeof record + record.length > ChunkFile::MAX_SIZE) {
        ReportAndStop(ERROR_NO_MEMORY);
    }
    Store.code_bytes += record.length;
    ++Store.Header.nof_code;
}

void RequireRoomForCode(uint32_t size, uint32_t repeats) {
    const uint64_t more = uint64_t{size} * repeats;
    // The table keeps a head with every chunk. It counts where repeats multiply what the input
    // holds.
    const uint64_t heads = repeats > 1 ? (uint64_t{size} + MAX_CHUNK - 1) / MAX_CHUNK * repeats : 0;
    if (Store.code_bytes + more > ChunkFile::MAX_SIZE ||
        (repeats > 1 && CodeTableSize() + more + heads * sizeof(CODEINFO) > ChunkFile::MAX_SIZE))
        ReportAndStop(ERROR_NO_MEMORY);
}

}  // namespace scan695
