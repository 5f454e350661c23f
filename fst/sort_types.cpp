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
    init_table32(Store.TypeTable, Work.TypeWork, sizeof(TYPEINFO), 0, count);
    Store.TypeTable.Free();

    Store.Header.types_offs = ImageEnd();
    WriteTable(Work.TypeWork.data(), sizeof(TYPEINFO), sizeof(TYPEINFO), count);
    SortRecords(CompareTypes, 0, count);
    Store.Header.type_index_offs = ImageEnd();
    WriteIndex(0);
    FreeEntries(Work.TypeWork);
}

}  // namespace scan695
