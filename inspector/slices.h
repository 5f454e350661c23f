// The slices of the indexes: the entries of one scope, sorted in themselves.
#pragma once

#include <cstdint>
#include <vector>

#include "inspector/reader.h"

namespace scan695::inspector {

// `count` entries of an index from `entry` on, which number the records from `first` on. The
// records themselves stand in the symbol table from `entry` on as well: record numbers run on
// behind a block whose count was cut to 16 bits, the table does not.
struct Slice {
    uint64_t entry = 0;
    uint32_t first = 0;
    uint32_t count = 0;
    int32_t module = -1;  // the scope that owns the slice; both -1 for the global symbols
    int32_t block = -1;
};

// All slices with entries of the symbol indexes, and of the two line indexes that are made of
// slices.
std::vector<Slice> SymbolSlices(const Fst& fst);
std::vector<Slice> LineSlices(const Fst& fst);

// Calls `use(number, record)` for the symbols of a slice in the order of an index. Entries that
// name no record are left out.
template <class Use>
void ForEachSymbol(const Fst& fst, SectionId index, const Slice& slice, Use use) {
    for (uint64_t i = slice.entry; i < slice.entry + slice.count; ++i) {
        const auto number = ReadEntry<uint32_t>(fst, index, i);
        if (!number) return;
        const uint32_t place = *number - slice.first;
        if (place >= slice.count) continue;
        if (const auto symbol = ReadEntry<SYMINFO>(fst, SYMBOLS, slice.entry + place))
            use(*number, *symbol);
    }
}

}  // namespace scan695::inspector
