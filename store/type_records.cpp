#include "store/type_records.h"

#include "store/tables.h"

namespace scan695 {

void AddType(const TYPEINFO& record) {
    AppendRecord(Store.TypeTable, record);
    ++Store.Header.nof_types;
}

void ReadField(uint32_t offset, FIELDINFO& field) {
    field = {};
    Store.FstImage.ReadAt(offset, &field, sizeof field);
}

bool WriteField(uint32_t offset, const FIELDINFO& field) {
    return Store.FstImage.WriteAt(offset, &field, sizeof field);
}

}  // namespace scan695
