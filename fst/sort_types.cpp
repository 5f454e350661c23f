#include "fst/compare_callbacks.h"
#include "fst/image_access.h"
#include "fst/sort_passes.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

void SortTypes() {
    const uint32_t count = Store.Header.nof_types;
    if (count == 0) return;
    Trace("Sorting %d types\n", static_cast<int32_t>(count));
    AllocateEntries(Work.TypeKeys, "init_table32", count);
    Store.Header.types_offs = ImageEnd();
    MoveTable<TYPEINFO>(Store.TypeTable, count, [](uint32_t number, const TYPEINFO& type) {
        Work.TypeKeys[number] = type.here_type_index;
    });
    SortRecords(CompareTypes, 0, count);
    Store.Header.type_index_offs = ImageEnd();
    WriteIndex(0);
    FreeEntries(Work.TypeKeys);
}

}  // namespace scan695
