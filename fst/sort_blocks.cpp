#include "fst/compare_callbacks.h"
#include "fst/image_access.h"
#include "fst/sort_passes.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

// A block owns the symbols between its own opening and the opening of the next block. Parents come
// before their children, so what is visible in them is known.
void CompleteBlock(uint32_t number) {
    FstHeader& header = Store.Header;
    BlockEntry& entry = Work.BlockWork[number];
    BLOCKINFO& block = entry.record;
    const uint32_t next_symbol = number + 1 < header.nof_blocks
                                     ? Work.BlockWork[number + 1].record.first_symbol
                                     : header.nof_block_symbols;
    block.nof_symbols = static_cast<uint16_t>(next_symbol - block.first_symbol);
    block.first_symbol += header.nof_global_symbols + header.nof_module_symbols;

    entry.visible_symbols = block.nof_symbols;
    if (block.parent != -1)
        entry.visible_symbols +=
            Work.BlockWork[static_cast<uint32_t>(block.parent)].visible_symbols;
    const auto visible = static_cast<int16_t>(entry.visible_symbols);
    if (visible > header.max_block_symbols) header.max_block_symbols = visible;
}

}  // namespace

void SortBlocks() {
    FstHeader& header = Store.Header;
    const uint32_t count = header.nof_blocks;
    if (count == 0) return;
    Trace("Sorting %d blocks\n", static_cast<int32_t>(count));
    init_table32(Store.BlockTable, Work.BlockWork, sizeof(BLOCKINFO), 0, count);
    Store.BlockTable.Free();

    header.max_block_symbols = 0;
    for (uint32_t i = 0; i < count; ++i) CompleteBlock(i);
    // A block without extent belongs nowhere and sorts behind all others.
    for (BlockEntry& entry : Work.BlockWork) {
        if (entry.record.size != 0) continue;
        entry.record.address = 0xFFFFFFFF;
        entry.record.parent = -1;
    }

    header.blocks_offs = ImageEnd();
    WriteTable(Work.BlockWork.data(), sizeof(BlockEntry), sizeof(BLOCKINFO), count);
    SortRecords(CompareBlocks, 0, count);
    header.block_addr_index_offs = ImageEnd();
    WriteIndex(0);
    FreeEntries(Work.BlockWork);
}

}  // namespace scan695
