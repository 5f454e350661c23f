#include "scopes/add_records.h"

#include "report/report.h"
#include "scopes/lifetime_fixup.h"
#include "scopes/scope_state.h"
#include "stf/stf_scopes.h"
#include "stf/stf_symbols.h"
#include "store/tables.h"

namespace scan695 {

namespace {

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

void StoreLocations(SYMINFO& record, std::span<const LOCINFO> locations) {
    record.access_mode |= ACCESS_HAS_LOCATIONS;
    record.nof_locs = static_cast<uint16_t>(locations.size());
    record.locinfo_offs =
        StoreInImage(locations.data(), static_cast<uint32_t>(locations.size_bytes()));
}

}  // namespace

int32_t AddBlock(BLOCKINFO& record) {
    record.first_symbol = Store.Header.nof_block_symbols;
    AppendRecord(Store.BlockTable, record);
    const auto number = static_cast<int32_t>(Store.Header.nof_blocks++);
    outBlockBegin(number, record);
    return number;
}

int32_t AddModule(MODULEINFO& record, char* name) {
    FstHeader& header = Store.Header;
    record.name_offs = StoreCountedName(CutName(name), header.max_module_name);
    record.first_symbol = header.nof_module_symbols;
    record.first_line = header.nof_lines;
    AppendRecord(Store.ModuleTable, record);
    const auto number = static_cast<int32_t>(header.nof_modules++);
    outModule(number, name, record);
    return number;
}

void AddLine(uint32_t address, uint32_t number) {
    LINEINFO record = {};
    record.address = address;
    record.module = Scopes.CurrentModule;
    record.number = static_cast<uint16_t>(number);
    Trace("Line #%u: %X\n", uint32_t{record.number}, address);
    // Only the post-processing reads the table.
    if (Report.DebugMode != 0) AppendRecord(Store.LineTable, record);
    outLine(static_cast<int32_t>(Store.Header.nof_lines++), record);
}

void AddSymbol(SYMINFO& record, char* name, std::span<const LOCINFO> locations) {
    record.name_offs = StoreCountedName(CutName(name), Store.Header.max_symbol_name);
    if (!locations.empty()) StoreLocations(record, locations);
    const SymbolTable destination = TableFor(record);
    if (!locations.empty() && &destination.table == &Store.BlockSymbolTable)
        WatchLifetime(destination.counter, record, locations);
    ++destination.counter;
    ++Store.Header.nof_all_symbols;
    AppendRecord(destination.table, record);
    outSymbol(name, record, locations);
}

bool ModuleExists(const char* name) {
    NameIndex& names = Scopes.Indexes.ModuleNames;
    const auto nof_modules = static_cast<uint32_t>(Scopes.CurrentModule + 1);
    if (!names.Update<MODULEINFO>(Store.ModuleTable, nof_modules))
        ReportAndStop(ERROR_READ_TEMPORARY);
    return names.Contains(name);
}

bool SymbolDefined(const char* name) {
    NameIndex& names = Scopes.Indexes.GlobalNames;
    if (!names.Update<SYMINFO>(Store.GlobalSymbolTable, Store.Header.nof_global_symbols))
        ReportAndStop("Cannot SEEK for SymName\n");
    return names.Contains(name);
}

}  // namespace scan695
