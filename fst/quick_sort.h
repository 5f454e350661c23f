// The one sort of the post-processing: record numbers ordered by a compare callback. The
// order of records with equal keys is part of the file format's bytes: it follows from the exact
// steps of a quicksort around the middle entry.
#pragma once

#include <cstdint>
#include <span>

namespace scan695 {

// Gives a negative number, 0 or a positive number for two record numbers.
using CompareFunction = int (*)(uint32_t a, uint32_t b);

// Sorts record numbers, fewer than 2^31 of them. Takes O(n log^2 n) steps at worst and few frames
// of stack.
void QuickSortIndex(std::span<uint32_t> index, CompareFunction compare);

}  // namespace scan695
