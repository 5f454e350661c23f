#include "scopes/blocks.h"

#include "stf/stf_scopes.h"
#include "store/tables.h"

namespace scan695 {

int32_t AddBlock(BLOCKINFO& record) {
    record.first_symbol = Store.Header.nof_block_symbols;
    AppendRecord(Store.BlockTable, record);
    const auto number = static_cast<int32_t>(Store.Header.nof_blocks++);
    outBlockBegin(number, record);
    return number;
}

}  // namespace scan695
