#include "fst/compare_callbacks.h"
#include "fst/image_access.h"
#include "fst/sort_passes.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

// Gives the offset of the index. Lines in front of the first module are in no slice.
uint32_t WriteModuleLineIndex(CompareFunction compare) {
    const uint32_t offset = ImageEnd();
    for (uint32_t i = 0; i < Store.Header.nof_modules; ++i) {
        const MODULEINFO& module = Work.ModuleWork[i];
        if (module.nof_lines == 0) continue;
        Trace("Sorting %d lines in module %d\n", module.nof_lines, static_cast<int32_t>(i));
        SortRecords(compare, module.first_line, module.nof_lines);
        WriteIndex(0);
    }
    return offset;
}

}  // namespace

void SortLines() {
    FstHeader& header = Store.Header;
    if (header.nof_lines == 0) return;
    init_table16(Store.LineTable, Work.LineWork, sizeof(LINEINFO), 0, header.nof_lines);
    Store.LineTable.Free();
    header.lines_offs = ImageEnd();
    WriteTable(Work.LineWork.data(), sizeof(LINEINFO), sizeof(LINEINFO), header.nof_lines);
    header.line_addr_index_offs = WriteModuleLineIndex(CompareLineAddresses);
    header.line_number_index_offs = WriteModuleLineIndex(CompareLineNumbers);
    Trace("Sorting %d lines globally\n", static_cast<int32_t>(header.nof_lines));
    header.global_line_index_offs = ImageEnd();
    SortRecords(CompareLineAddresses, 0, header.nof_lines);
    WriteIndex(0);
    FreeEntries(Work.LineWork);
}

}  // namespace scan695
