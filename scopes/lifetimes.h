// Lifetimes of a variable: from an unordered bag of begin and end marks, one per record of the
// input, to an ordered list of locations, one per range. The bag is not clean: marks of several
// ranges meet at one address, ranges that go on are split, the last one may have no end.
#pragma once

#include <cstdint>
#include <vector>

#include "scopes/lifetime_mark.h"
#include "store/records.h"

namespace scan695 {

// Reads the values of a mark, three or four ASN records with the symbol's index.
TkLoc ReadLifetimeMark(uint32_t idx);

// Makes the locations. Without an end for the last range the list ends in OPEN_END and
// `unterminated` goes up by 1. `marks` is used up.
std::vector<LOCINFO> MakeLocations(std::vector<TkLoc>& marks, uint32_t& unterminated);

}  // namespace scan695
