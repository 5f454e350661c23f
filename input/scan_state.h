// The run state of the scanner that readers, types and scopes share. ScanModule starts a scan by
// assigning a new ScanState.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

struct ScanState {
    uint32_t ScanC166 = 0;            // 1 for the processor name "80166"
    int32_t CurrentModule = -1;       // module that records now belong to; -1 before the first
    int32_t CurrentBlock = -1;        // open block in the BlockTable; -1 outside all blocks
    uint32_t ExternalPartOffset = 0;  // 0 for none
    MODULEINFO module_record = {};    // of the last BB3 or BB10 block; scopes read its language
    uint32_t type_depth = 0;          // nesting of type definitions,
    uint32_t block_depth = 0;         // of blocks,
    uint32_t source_depth = 0;        // and of source files, for the limit of 1,000
};
extern ScanState Scan;

}  // namespace scan695
