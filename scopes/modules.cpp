#include "scopes/modules.h"

#include "input/scan_state.h"
#include "report/report.h"
#include "scopes/scope_state.h"
#include "stf/stf_scopes.h"
#include "store/tables.h"

namespace scan695 {

int32_t AddModule(MODULEINFO& record, char* name) {
    FstHeader& header = Store.Header;
    record.name_offs = StoreCountedName(name, header.max_module_name);
    record.first_symbol = header.nof_module_symbols;
    record.first_line = header.nof_lines;
    AppendRecord(Store.ModuleTable, record);
    const auto number = static_cast<int32_t>(header.nof_modules++);
    outModule(number, name, record);
    return number;
}

bool ModuleExists(const char* name) {
    NameIndex& names = Scopes.Indexes.ModuleNames;
    const auto nof_modules = static_cast<uint32_t>(Scan.CurrentModule + 1);
    if (names.Update<MODULEINFO>(Store.ModuleTable, nof_modules) == 0)
        ReportAndStop(ERROR_READ_TEMPORARY);
    return names.Contains(name);
}

}  // namespace scan695
