#include "fst/compare_callbacks.h"
#include "fst/image_access.h"
#include "fst/sort_passes.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

// A module owns all that was added between its own adding and the next module's.
void PrepareModules() {
    const FstHeader& header = Store.Header;
    const uint32_t count = header.nof_modules;
    if (count == 0) return;
    init_table32(Store.ModuleTable, Work.ModuleWork, sizeof(MODULEINFO), 0, count);
    Store.ModuleTable.Free();

    Work.ModuleWork[0].first_symbol = 0;
    for (uint32_t i = 0; i < count; ++i) {
        MODULEINFO& module = Work.ModuleWork[i];
        const MODULEINFO* next = i + 1 < count ? &Work.ModuleWork[i + 1] : nullptr;
        const uint32_t next_symbol =
            next != nullptr ? next->first_symbol : header.nof_module_symbols;
        const uint32_t next_line = next != nullptr ? next->first_line : header.nof_lines;
        module.nof_symbols = next_symbol - module.first_symbol;
        module.first_symbol += header.nof_global_symbols;
        module.nof_lines = static_cast<uint16_t>(next_line - module.first_line);
    }
}

void SortModules() {
    const uint32_t count = Store.Header.nof_modules;
    if (count == 0) return;
    Trace("Sorting %d modules\n", static_cast<int32_t>(count));
    Store.Header.modules_offs = ImageEnd();
    WriteTable(Work.ModuleWork.data(), sizeof(MODULEINFO), sizeof(MODULEINFO), count);
    init_names(Work.ModuleWork.data(), sizeof(MODULEINFO), count);
    SortRecords(CompareNames, 0, count);
    Store.Header.module_name_index_offs = ImageEnd();
    WriteIndex(0);
    FreeEntries(Work.NameWork);
    FreeEntries(Work.ModuleWork);
}

}  // namespace scan695
