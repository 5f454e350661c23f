// Single records through the indexes of the file, where they stand. All give nothing where the file
// has nothing, damaged or not.
#pragma once

#include <cstdint>
#include <optional>

#include "inspector/slices.h"

namespace scan695::inspector {

struct FoundType {
    uint32_t record;
    TYPEINFO type;
};

// The record of a type index: nothing for basic types and references that were never resolved.
std::optional<FoundType> FindType(const Fst& fst, uint32_t type_index);

// The size in bytes of an object of a type. Nothing for functions, bitfields, what has no record,
// and chains of attributes that come back to themselves.
std::optional<uint32_t> SizeOfType(const Fst& fst, uint32_t type_index);

// The slices of single scopes in a file whose symbol counts were not cut (see HasAllSymbols).
Slice GlobalSlice(const Fst& fst);
Slice ModuleSlice(const Fst& fst, uint32_t module);
Slice BlockSlice(const Fst& fst, uint32_t block);

// False if a block has so many symbols that its count was cut: then the symbol table lacks records,
// and the slices behind the gap are not in order.
bool HasAllSymbols(const Fst& fst);

// The first place in the sorted entries [begin, end) of an index for which `is_before(number)`
// fails.
template <class IsBefore>
uint64_t LowerBound(const Fst& fst, SectionId index, uint64_t begin, uint64_t end,
                    IsBefore is_before) {
    while (begin < end) {
        const uint64_t middle = begin + (end - begin) / 2;
        const auto number = ReadEntry<uint32_t>(fst, index, middle);
        if (number && is_before(*number)) {
            begin = middle + 1;
        } else {
            end = middle;
        }
    }
    return begin;
}

// The number of the function symbol of a block: the code symbol of its module at its address.
std::optional<uint32_t> FunctionSymbol(const Fst& fst, const BLOCKINFO& block);

}  // namespace scan695::inspector
