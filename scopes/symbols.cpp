#include "scopes/symbols.h"

#include "report/report.h"
#include "scopes/lifetime_fixup.h"
#include "stf/stf_symbols.h"
#include "store/tables.h"
#include "types/type_state.h"

namespace scan695 {

namespace {

constexpr uint32_t MARKER_TYPE_MASK = 0x7FFF;  // what a marker keeps of its type number

struct SymbolTable {
    ChunkFile& table;
    uint32_t& counter;
};

SymbolTable TableFor(const SYMINFO& record) {
    FstHeader& header = Store.Header;
    if (record.module != -1) {
        if (record.block != -1) return {Store.BlockSymbolTable, header.nof_block_symbols};
        if (record.storage_class == STORAGE_STATIC)
            return {Store.ModuleSymbolTable, header.nof_module_symbols};
    }
    return {Store.GlobalSymbolTable, header.nof_global_symbols};
}

void StoreLocations(SYMINFO& record, uint32_t nof_locs, const LOCINFO* locs) {
    record.access_mode |= ACCESS_HAS_LOCATIONS;
    record.nof_locs = static_cast<uint16_t>(nof_locs);
    record.locinfo_offs = StoreInImage(locs, nof_locs * static_cast<uint32_t>(sizeof(LOCINFO)));
}

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

void AddSymbol(SYMINFO& record, char* name, uint32_t nof_locs, const LOCINFO* locs) {
    record.name_offs = StoreCountedName(name, Store.Header.max_symbol_name);
    if (nof_locs > 0) StoreLocations(record, nof_locs, locs);
    const SymbolTable destination = TableFor(record);
    if (nof_locs > 0 && &destination.table == &Store.BlockSymbolTable)
        WatchLifetime(destination.counter, record, nof_locs, locs[nof_locs - 1]);
    ++destination.counter;
    ++Store.Header.nof_all_symbols;
    AppendRecord(destination.table, record);
    outSymbol(name, record, nof_locs, locs);
}

void UpdateSymbolTypes() {
    uint32_t remaining = Types.Map.unresolved;
    if (remaining == 0) return;
    Trace("Updating symbol types, unresolved count=%d\n", static_cast<int32_t>(remaining));
    UpdateTable(Store.GlobalSymbolTable, Store.Header.nof_global_symbols, remaining);
    UpdateTable(Store.ModuleSymbolTable, Store.Header.nof_module_symbols, remaining);
    UpdateTable(Store.BlockSymbolTable, Store.Header.nof_block_symbols, remaining);
}

}  // namespace scan695
