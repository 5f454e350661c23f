#include <algorithm>

#include "fst/compare_callbacks.h"
#include "fst/image_access.h"
#include "fst/sort_passes.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

// Of the block behind; the last one is followed by none.
uint32_t FirstSymbolBehind(uint32_t number) {
    if (number + 1 == Store.Header.nof_blocks) return Store.Header.nof_block_symbols;
    BLOCKINFO next = {};
    ReadRecord(Store.BlockTable, number + 1, next);
    return next.first_symbol;
}

// A block owns the symbols between its own opening and the opening of the next block. Parents come
// before their children, so what is visible in them is known.
void CompleteBlock(uint32_t number, BLOCKINFO& block) {
    FstHeader& header = Store.Header;
    block.nof_symbols = static_cast<uint16_t>(FirstSymbolBehind(number) - block.first_symbol);
    block.first_symbol += header.nof_global_symbols + header.nof_module_symbols;

    uint32_t& visible = Work.BlockSymbols[number];
    visible = block.nof_symbols;
    if (block.parent != -1) visible += Work.BlockSymbols[static_cast<uint32_t>(block.parent)];
    header.max_block_symbols = std::max(header.max_block_symbols, static_cast<int16_t>(visible));
    // A block without extent belongs nowhere and sorts behind all others.
    if (block.size == 0) {
        block.address = 0xFFFFFFFF;
        block.parent = -1;
    }
    Work.BlockKeys[number] = {block.address, block.size, block.parent};
}

}  // namespace

void SortBlocks() {
    FstHeader& header = Store.Header;
    const uint32_t count = header.nof_blocks;
    if (count == 0) return;
    Trace("Sorting %d blocks\n", static_cast<int32_t>(count));
    AllocateEntries(Work.BlockKeys, "init_table32", count);
    AllocateEntries(Work.BlockSymbols, "init_table32", count);

    header.max_block_symbols = 0;
    header.blocks_offs = ImageEnd();
    MoveTable<BLOCKINFO>(Store.BlockTable, count, CompleteBlock);
    FreeEntries(Work.BlockSymbols);
    SortRecords(CompareBlocks, 0, count);
    header.block_addr_index_offs = ImageEnd();
    WriteIndex(0);
    FreeEntries(Work.BlockKeys);
}

}  // namespace scan695
