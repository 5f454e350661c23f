#include "scopes/lines.h"

#include "input/scan_state.h"
#include "report/report.h"
#include "stf/stf_scopes.h"
#include "store/records.h"
#include "store/tables.h"

namespace scan695 {

void AddLine(uint32_t address, uint32_t number) {
    LINEINFO record = {};
    record.address = address;
    record.module = Scan.CurrentModule;
    record.number = static_cast<uint16_t>(number);
    Trace("Line #%u: %X\n", uint32_t{record.number}, address);
    AppendRecord(Store.LineTable, record);
    outLine(static_cast<int32_t>(Store.Header.nof_lines++), record);
}

}  // namespace scan695
