#include "store/type_records.h"

#include "store/tables.h"

namespace scan695 {

void AddType(const TYPEINFO& record) {
    AppendRecord(Store.TypeTable, record);
    ++Store.Header.nof_types;
}

void ReadField(uint32_t offset, FIELDINFO& field) {
    field = {};
    if (Store.FstImage.Seek(offset, ChunkFile::FROM_START) != 0)
        Store.FstImage.Read(&field, sizeof field);
}

int WriteField(uint32_t offset, const FIELDINFO& field) {
    return Store.FstImage.Seek(offset, ChunkFile::FROM_START) != 0
               ? Store.FstImage.Write(&field, sizeof field)
               : 0;
}

}  // namespace scan695
