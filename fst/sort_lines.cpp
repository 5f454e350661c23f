#include "fst/compare_callbacks.h"
#include "fst/sort_passes.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

void WriteLines() {
    if (Store.LineTable.Seek(0, ChunkFile::FROM_START) == 0) ReportAndStop(ERROR_READ_TEMPORARY);
    for (uint32_t i = 0; i < Store.Header.nof_lines; ++i) {
        ProgressTick();
        LINEINFO line = {};
        if (Store.LineTable.Read(&line, sizeof line) == 0) ReportAndStop(ERROR_READ_TEMPORARY);
        WriteToImage(&line, sizeof line);
    }
}

void WriteLineSlice(CompareFunction compare, uint32_t first, uint32_t count) {
    init_table16(Store.LineTable, Work.LineWork, sizeof(LINEINFO), first, count);
    SortRecords(compare, count);
    WriteIndex(first, count);
    Work.LineWork.reset();
}

// Gives the offset of the index. Lines in front of the first module are in no slice.
uint32_t WriteModuleLineIndex(CompareFunction compare) {
    const uint32_t offset = SeekImageEnd();
    for (uint32_t i = 0; i < Store.Header.nof_modules; ++i) {
        const MODULEINFO& module = Work.ModuleWork[i];
        if (module.nof_lines == 0) continue;
        Trace("Sorting %d lines in module %d\n", module.nof_lines, static_cast<int32_t>(i));
        WriteLineSlice(compare, module.first_line, module.nof_lines);
    }
    return offset;
}

}  // namespace

void SortLines() {
    FstHeader& header = Store.Header;
    if (header.nof_lines == 0) return;
    header.lines_offs = SeekImageEnd();
    WriteLines();
    header.line_addr_index_offs = WriteModuleLineIndex(CompareLineAddresses);
    header.line_number_index_offs = WriteModuleLineIndex(CompareLineNumbers);
    Trace("Sorting %d lines globally\n", static_cast<int32_t>(header.nof_lines));
    header.global_line_index_offs = SeekImageEnd();
    WriteLineSlice(CompareLineAddresses, 0, header.nof_lines);
    Store.LineTable.Free();
}

}  // namespace scan695
