#include "reader/code_image.h"

#include "report/report.h"
#include "stf/code_records.h"
#include "store/tables.h"

namespace scan695 {

namespace {

// Of the CodeTable: a head and the bytes of every chunk so far.
uint64_t CodeTableSize() {
    return outCodeBytes() + uint64_t{sizeof(CODEINFO)} * Store.Header.nof_code;
}

// Only the post-processing reads the table. Without it nothing but the limit of its size counts.
void AddToCodeTable(const CODEINFO& record, const uint8_t* bytes) {
    if (Report.DebugMode == 0) {
        if (CodeTableSize() + sizeof record + record.length > ChunkFile::MAX_SIZE)
            ReportAndStop(ERROR_NO_MEMORY);
        return;
    }
    AppendRecord(Store.CodeTable, record);
    AppendRecordBytes(Store.CodeTable, bytes, record.length);
}

}  // namespace

void AddCode(uint8_t mem_type, const uint8_t* bytes, uint32_t address, uint16_t size,
             int32_t module) {
    if (size == 0) return;
    CODEINFO record = {};
    record.address = address;
    record.length = size;
    record.module = module;
    record.mem_type = mem_type;
    AddToCodeTable(record, bytes);
    outCodeAdd(record, bytes);
    ++Store.Header.nof_code;
}

void RequireRoomForCode(uint32_t size, uint32_t repeats) {
    const uint64_t more = uint64_t{size} * repeats;
    // The table keeps a head with every chunk. It counts where repeats multiply what the input
    // holds.
    const uint64_t heads = repeats > 1 ? (uint64_t{size} + MAX_CHUNK - 1) / MAX_CHUNK * repeats : 0;
    if (outCodeBytes() + more > ChunkFile::MAX_SIZE ||
        (repeats > 1 && CodeTableSize() + more + heads * sizeof(CODEINFO) > ChunkFile::MAX_SIZE))
        ReportAndStop(ERROR_NO_MEMORY);
}

}  // namespace scan695
