#include "fst/compare_callbacks.h"
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

    Store.Header.types_offs = SeekImageEnd();
    WriteTable(Work.TypeWork.get(), sizeof(TYPEINFO), sizeof(TYPEINFO), count);
    SortRecords(CompareTypes, count);
    Store.Header.type_index_offs = SeekImageEnd();
    WriteIndex(0, count);
    Work.TypeWork.reset();
}

}  // namespace scan695
