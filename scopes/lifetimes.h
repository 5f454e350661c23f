// Lifetimes of a variable: from an unordered bag of begin and end marks, one per record of the
// input, to an ordered list of locations, one per range. The bag is not clean: marks of several
// ranges meet at one address, ranges that go on are split, the last one may have no end.
#pragma once

#include <cstdint>
#include <vector>

#include "store/records.h"

namespace scan695 {

// One mark: from PC on the variable is at addr, or is no longer there. The names are those of the
// trace.
struct TkLoc {
    uint32_t PC;
    uint32_t sc;    // low 3 bits: storage class in the input's numbers; bit 3: an end mark
    uint32_t addr;  // address, stack offset or register value
    uint32_t mem;   // memory word, 0 without one

    static constexpr uint32_t END = 8;
    bool IsEnd() const { return (sc & END) != 0; }
};

// Reads the values of a mark, three or four ASN records with the symbol's index.
TkLoc ReadLifetimeMark(uint32_t idx);

// Makes the locations. Without an end for the last range the list ends in OPEN_END and
// `unterminated` goes up by 1. `marks` is used up.
std::vector<LOCINFO> MakeLocations(std::vector<TkLoc>& marks, uint32_t& unterminated);

}  // namespace scan695
