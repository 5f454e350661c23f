// The way of a block into its table.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// Notes in the record where the symbols of the block begin, stores it, writes the opening Block
// record of the STF file and gives the block's index. No memory ends the run.
int32_t AddBlock(BLOCKINFO& record);

}  // namespace scan695
