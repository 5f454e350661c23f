// Stretches of code.
#pragma once

#include <cstdint>
#include <vector>

#include "dwarf/entries.h"

namespace scan695::dwarf {

inline constexpr uint64_t ADDRESS_SPACE = uint64_t{1} << 32;

struct Stretch {
    uint64_t begin;
    uint64_t end;  // at most ADDRESS_SPACE
};

// A stretch that would pass the end of the address space ends there.
Stretch StretchOf(uint32_t address, uint32_t size);

// Sorts stretches and joins those that touch or overlap; empty ones go.
void Join(std::vector<Stretch>& stretches);

// The parts of `stretches` that lie in `within`; both are joined.
std::vector<Stretch> Common(const std::vector<Stretch>& stretches,
                            const std::vector<Stretch>& within);

// Adds the code of an entry: two addresses, or a list in .debug_ranges where there are several
// stretches, counted from the base address of the unit, which is not above any of them.
void AddCode(EntryWriter& writer, Bytes& ranges, const std::vector<Stretch>& stretches,
             uint32_t base);

}  // namespace scan695::dwarf
