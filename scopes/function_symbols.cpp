#include "scopes/function_symbols.h"

#include "store/records.h"
#include "store/tables.h"

namespace scan695 {

void FunctionSymbols::Update(ChunkFile& table, uint32_t count) {
    for (; nof_records_ < count; ++nof_records_) {
        SYMINFO record = {};
        ReadRecord(table, nof_records_, record);
        if (record.mem_type != MEM_CODE || record.type_index < FIRST_TYPE_INDEX) continue;
        records_.AddNew(record.value, nof_records_);
    }
}

}  // namespace scan695
