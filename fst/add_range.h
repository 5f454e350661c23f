// The interval map behind the module range table (Work.Ranges): a later stretch overrules an
// earlier one where they overlap, and neighbouring stretches of one module fuse across gaps.
#pragma once

#include <cstdint>

namespace scan695 {

// Enters `length` bytes from `start` on for a module. A module of -1 or a length of 0 adds nothing.
// No memory for the table ends the run.
void AddRange(uint32_t start, uint32_t length, int32_t module);

// Makes one entry of each run of neighbours of one module among the entries `low` to `high`, with
// the run's first start and the end of its last entry; gaps inside the run close.
void MergeNeighbours(int32_t low, int32_t high);

}  // namespace scan695
