// What the scan cannot know of a symbol: its size and, below attributed types, its final type and
// memory.
#pragma once

#include <cstdint>

namespace scan695 {

// The size in bytes of an object of a type, which must be a basic type or stand in the finished
// type sections. Walks down through attributed types: each replaces `type_index` and, by its
// attribute, `mem_type`; `value` tells the two bit memories apart. The position of the image stays.
// A type that is not found, and a chain of attributed types that comes back to itself, end the run.
uint32_t SymbolSize(const uint32_t* value, uint32_t* type_index, int8_t* mem_type);

}  // namespace scan695
