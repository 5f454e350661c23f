// The one sort of the post-processing: record numbers in SortIndex, ordered by CompareCallback. The
// order of records with equal keys is part of the file format's bytes: it follows from the exact
// steps of a quicksort around the middle entry.
#pragma once

#include <cstdint>

namespace scan695 {

// Sorts the entries from `low` to `high` (inclusive) of SortIndex. Takes O(n log^2 n) steps at
// worst and few frames of stack.
void QuickSortIndex(int32_t low, int32_t high);

}  // namespace scan695
