#include "scopes/stack_info.h"

#include "report/report.h"
#include "scopes/scope_state.h"
#include "store/stored_names.h"
#include "store/tables.h"

namespace scan695 {

namespace {

struct FoundSymbol {
    ChunkFile* table;  // null for none
    uint32_t number;
};

// Global symbols go before those of modules.
FoundSymbol FindFunctionSymbol(uint32_t address) {
    const auto global = Scopes.Indexes.GlobalFunctions.Find(address);
    if (global) return {&Store.GlobalSymbolTable, *global};
    const auto local = Scopes.Indexes.ModuleFunctions.Find(address);
    if (local) return {&Store.ModuleSymbolTable, *local};
    return {nullptr, 0};
}

void TraceEntries(const SYMINFO& symbol, const std::vector<LOCINFO>& entries) {
    if (Report.DebugMode == 0) return;
    const StoredName name = ReadStoredName(symbol.name_offs).value_or(StoredName());
    Trace("Stack adjust info for function \"%s\" (address %x)\n", name.text, symbol.value);
    int32_t number = 0;
    for (const LOCINFO& entry : entries)
        Trace("  %d: from %x to %x: adjust value=%x\n", number++, entry.beg_address,
              entry.end_address, entry.value);
}

void AttachTo(const FoundSymbol& found, const std::vector<LOCINFO>& entries) {
    const auto count = static_cast<uint32_t>(entries.size());
    const uint32_t offset = StoreInImage(entries.data(), count * uint32_t{sizeof(LOCINFO)});
    if (Report.DebugMode == 0) return;
    SYMINFO symbol = {};
    ReadRecord(*found.table, found.number, symbol);
    symbol.access_mode |= ACCESS_HAS_LOCATIONS;
    symbol.nof_locs = static_cast<uint16_t>(count);
    symbol.locinfo_offs = offset;
    WriteRecord(*found.table, found.number, symbol);
    TraceEntries(symbol, entries);
}

// Hangs what is complete on the symbol of the function and starts anew. Without DebugMode the list
// still takes its room in the image, whose other items stay where they are.
void AttachEntries() {
    const uint32_t address =
        Scopes.Indexes.Functions.AddressOf(static_cast<uint32_t>(Scopes.StackInfo.function));
    const FoundSymbol found = FindFunctionSymbol(address);
    if (found.table != nullptr)
        AttachTo(found, Scopes.StackInfo.entries);
    else
        Trace("**** AddStackInfo: cannot find function for address %x\n", address);
    Scopes.StackInfo = StackCollection();
}

// A point opens a range but for a return to 0 at an odd count of points, which closes one. A range
// that was open is lost when the next one opens.
void TakePoint(StackCollection& collection, uint32_t pc, uint32_t adjust) {
    if (collection.points % 2 == 0 || adjust != 0) {
        collection.open = {};
        collection.open.value = adjust;
        collection.open.exec_mem_type = 1;
        collection.open.beg_address = pc;
        collection.open.end_address = OPEN_END;
    } else {
        collection.open.end_address = pc;
        collection.entries.push_back(collection.open);
    }
    ++collection.points;
}

}  // namespace

void AddStackInfo(uint32_t pc, uint32_t adjust, uint32_t stk_type) {
    if (stk_type == STACK_INFO_CLOSE) {
        if (!Scopes.StackInfo.entries.empty()) AttachEntries();
        return;
    }
    const int32_t function = Scopes.Indexes.Functions.Find(pc);
    if (function == -1) {
        Trace("**** AddStackInfo: cannot find function block for address %x\n", pc);
        return;
    }
    if (Scopes.StackInfo.function != -1 && Scopes.StackInfo.function != function) AttachEntries();
    Scopes.StackInfo.function = function;
    TakePoint(Scopes.StackInfo, pc, adjust);
}

}  // namespace scan695
