// Where things are: location expressions, and the location lists of .debug_loc.
#pragma once

#include <cstdint>
#include <vector>

#include "dwarf/bytes.h"
#include "inspector/reader.h"

namespace scan695::dwarf {

// The place of a symbol or a location by its storage class; empty for a class that nobody knows.
Bytes PlaceExpression(uint8_t processor, uint8_t storage_class, uint32_t value);
// Where bits of one byte stand.
Bytes AddressExpression(uint32_t address);
// The frame base where the stack pointer stands adjusted by `adjustment`.
Bytes FrameExpression(uint8_t processor, uint32_t adjustment);

// A place from `begin` up to `end`.
struct Lifetime {
    uint32_t begin;
    uint32_t end;
    Bytes expression;
};

// The location records of a symbol as far as the file has them.
std::vector<LOCINFO> LocationsOf(const inspector::Fst& fst, const SYMINFO& symbol);

// The lifetimes of a variable, without those that are empty or have no place.
std::vector<Lifetime> VariableLifetimes(uint8_t processor, const std::vector<LOCINFO>& locations);

// The frame base of a function from `begin` up to `end`: adjusted as the locations of its symbol
// tell, and the stack pointer itself where they tell nothing.
std::vector<Lifetime> FrameLifetimes(uint8_t processor, std::vector<LOCINFO> adjustments,
                                     uint32_t begin, uint32_t end);

// Appends a list to .debug_loc and gives its offset. Addresses count from 0, whatever the unit.
uint32_t AppendList(Bytes& loc, const std::vector<Lifetime>& lifetimes);

}  // namespace scan695::dwarf
