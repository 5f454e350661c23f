#include "scopes/update_symbols.h"

#include "report/report.h"
#include "store/tables.h"
#include "types/type_state.h"

namespace scan695 {

namespace {

constexpr uint32_t MARKER_TYPE_MASK = 0x7FFF;  // what a marker keeps of its type number

// Gives the type that the marker stands for, or void. `remaining` counts the references that still
// wait.
uint32_t ResolveMarker(uint32_t marker, uint32_t& remaining) {
    const uint32_t tk_ti = marker & MARKER_TYPE_MASK;
    uint32_t fst_ti = 0;
    if (!Types.Map.Lookup(tk_ti, fst_ti)) {
        Trace("SYMBOL:type tk_ti=%d NOT updated, set as UNKNOWN\n", static_cast<int32_t>(tk_ti));
        return TYPE_VOID;
    }
    --remaining;
    Trace("SYMBOL:Updated tk_ti=%d as fst_ti=%u\n", static_cast<int32_t>(tk_ti), fst_ti);
    return fst_ti;
}

void UpdateTable(ChunkFile& table, uint32_t count, uint32_t& remaining) {
    for (uint32_t i = 0; i < count && remaining != 0; ++i) {
        SYMINFO record = {};
        ReadRecord(table, i, record);
        if (!IsTypeMarker(record.type_index)) continue;
        record.type_index = ResolveMarker(record.type_index, remaining);
        WriteRecord(table, i, record);
    }
}

}  // namespace

void UpdateSymbolTypes() {
    uint32_t remaining = Types.Map.unresolved;
    if (remaining == 0 || Report.DebugMode == 0) return;
    Trace("Updating symbol types, unresolved count=%d\n", static_cast<int32_t>(remaining));
    UpdateTable(Store.GlobalSymbolTable, Store.Header.nof_global_symbols, remaining);
    UpdateTable(Store.ModuleSymbolTable, Store.Header.nof_module_symbols, remaining);
    UpdateTable(Store.BlockSymbolTable, Store.Header.nof_block_symbols, remaining);
}

}  // namespace scan695
