#include <algorithm>

#include "fst/compare_callbacks.h"
#include "fst/image_access.h"
#include "fst/sort_passes.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

constexpr uint32_t PIECE = 4096;  // symbols in memory while they move

// Moves the symbols of one scope from their table into the image.
void WriteScope(ChunkFile& table, uint32_t first, uint32_t count) {
    for (uint32_t done = 0; done < count; done += PIECE) {
        const uint32_t piece = std::min(PIECE, count - done);
        init_table32(table, Work.SymbolWork, sizeof(SYMINFO), first + done, piece);
        for (SYMINFO& symbol : Work.SymbolWork)
            symbol.size =
                SymbolSize(Work.SymbolTypes, symbol.value, symbol.type_index, symbol.mem_type);
        WriteTable(Work.SymbolWork.data(), sizeof(SYMINFO), sizeof(SYMINFO), piece);
        FreeEntries(Work.SymbolWork);
        table.FreeInFrontOf((first + done + piece) * uint32_t{sizeof(SYMINFO)});
    }
}

void WriteSymbols() {
    const FstHeader& header = Store.Header;
    if (header.nof_global_symbols != 0)
        WriteScope(Store.GlobalSymbolTable, 0, header.nof_global_symbols);
    Store.GlobalSymbolTable.Free();

    for (uint32_t i = 0; i < header.nof_modules; ++i) {
        const MODULEINFO& module = Work.ModuleWork[i];
        if (module.nof_symbols != 0)
            WriteScope(Store.ModuleSymbolTable, module.first_symbol - header.nof_global_symbols,
                       module.nof_symbols);
    }
    Store.ModuleSymbolTable.Free();

    for (uint32_t i = 0; i < header.nof_blocks; ++i) {
        const BLOCKINFO block = GetBlockRecord(i);
        if (block.nof_symbols != 0)
            WriteScope(Store.BlockSymbolTable,
                       block.first_symbol - header.nof_module_symbols - header.nof_global_symbols,
                       block.nof_symbols);
    }
    Store.BlockSymbolTable.Free();
    Work.SymbolTypes = {};
}

// Appends the slice of one scope to a symbol index. Record numbers are those of the whole table.
void WriteSymbolSlice(CompareFunction compare, uint32_t first, uint32_t count) {
    init_symbols(first, count);
    if (compare == CompareNames) init_names(Work.SymbolKeys.data(), sizeof(SymbolEntry), count);
    SortRecords(compare, 0, count);
    WriteIndex(first);
    FreeEntries(Work.NameWork);
    FreeEntries(Work.SymbolKeys);
}

// Gives the offset of the index.
uint32_t WriteSymbolIndex(CompareFunction compare) {
    const FstHeader& header = Store.Header;
    const uint32_t offset = ImageEnd();
    if (header.nof_global_symbols != 0) {
        Trace("Sorting %d global symbols\n", static_cast<int32_t>(header.nof_global_symbols));
        WriteSymbolSlice(compare, 0, header.nof_global_symbols);
    }
    for (uint32_t i = 0; i < header.nof_modules; ++i) {
        const MODULEINFO& module = Work.ModuleWork[i];
        if (module.nof_symbols == 0) continue;
        Trace("Sorting %d symbols in module %d\n", static_cast<int32_t>(module.nof_symbols),
              static_cast<int32_t>(i));
        WriteSymbolSlice(compare, module.first_symbol, module.nof_symbols);
    }
    for (uint32_t i = 0; i < header.nof_blocks; ++i) {
        const BLOCKINFO block = GetBlockRecord(i);
        if (block.nof_symbols == 0) continue;
        Trace("Sorting %d symbols in block %d\n", block.nof_symbols, static_cast<int32_t>(i));
        WriteSymbolSlice(compare, block.first_symbol, block.nof_symbols);
    }
    return offset;
}

}  // namespace

void SortSymbols() {
    if (Store.Header.nof_all_symbols == 0) return;
    Store.Header.symbols_offs = ImageEnd();
    WriteSymbols();
    Store.Header.symbol_addr_index_offs = WriteSymbolIndex(CompareSymbolAddresses);
    Store.Header.symbol_name_index_offs = WriteSymbolIndex(CompareNames);
}

}  // namespace scan695
