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

// For those who will search by name or by address.
void NoteInIndexes(const SYMINFO& record, const SymbolTable& destination) {
    ScopeIndexes& indexes = Scopes.Indexes;
    if (&destination.table == &Store.GlobalSymbolTable) {
        indexes.GlobalNames.Add(record.name_offs);
        // Public symbols come when nobody asks any more.
        if (record.module != -1) indexes.GlobalFunctions.Add(record, destination.counter);
    } else if (&destination.table == &Store.ModuleSymbolTable) {
        indexes.ModuleFunctions.Add(record, destination.counter);
    }
}

}  // namespace

int32_t AddBlock(BLOCKINFO& record) {
    record.first_symbol = Store.Header.nof_block_symbols;
    const auto number = static_cast<int32_t>(Store.Header.nof_blocks);
    CountRecord(Store.BlockTable, Store.Header.nof_blocks, record);
    Scopes.Indexes.Functions.AddBlock();
    outBlockBegin(number, record);
    return number;
}

void FinishBlock(int32_t number, const BLOCKINFO& record) {
    if (Report.DebugMode != 0) WriteRecord(Store.BlockTable, static_cast<uint32_t>(number), record);
    if (record.is_function != 0)
        Scopes.Indexes.Functions.SetSpan(static_cast<uint32_t>(number), record.address,
                                         record.size);
}

int32_t AddModule(MODULEINFO& record, char* name) {
    FstHeader& header = Store.Header;
    record.name_offs = StoreCountedName(CutName(name), header.max_module_name);
    record.first_symbol = header.nof_module_symbols;
    record.first_line = header.nof_lines;
    AppendRecord(Store.ModuleTable, record);
    Scopes.Indexes.ModuleNames.Add(record.name_offs);
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
    const auto line = static_cast<int32_t>(Store.Header.nof_lines);
    CountRecord(Store.LineTable, Store.Header.nof_lines, record);
    outLine(line, record);
}

void AddSymbol(SYMINFO& record, char* name, std::span<const LOCINFO> locations) {
    record.name_offs = StoreCountedName(CutName(name), Store.Header.max_symbol_name);
    if (!locations.empty()) StoreLocations(record, locations);
    const SymbolTable destination = TableFor(record);
    if (!locations.empty() && &destination.table == &Store.BlockSymbolTable)
        WatchLifetime(destination.counter, record, locations);
    NoteInIndexes(record, destination);
    CountRecord(destination.table, destination.counter, record);
    ++Store.Header.nof_all_symbols;
    outSymbol(name, record, locations);
}

bool ModuleExists(const char* name) {
    return Scopes.Indexes.ModuleNames.Contains(name);
}

bool SymbolDefined(const char* name) {
    return Scopes.Indexes.GlobalNames.Contains(name);
}

}  // namespace scan695
