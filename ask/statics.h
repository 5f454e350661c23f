// The variables that have an address, from the symbols of all scopes: no index of the file has them
// together.
#pragma once

#include <cstdint>
#include <vector>

#include "inspector/slices.h"

namespace scan695::ask {

using inspector::Fst;

struct Symbol {
    uint32_t number = 0;  // of its record
    SYMINFO record = {};
};

// True for a global or static symbol that takes bytes of memory. Bits, registers, constants and
// functions do not.
bool IsStaticVariable(const SYMINFO& symbol);

// By address, the larger first, by number.
std::vector<Symbol> StaticVariables(const Fst& fst);

// All symbols, slice by slice, in the order of their records.
template <class Use>
void ForAllSymbols(const Fst& fst, Use use) {
    for (const inspector::Slice& slice : inspector::SymbolSlices(fst)) {
        for (uint32_t i = 0; i < slice.count; ++i) {
            const auto symbol =
                inspector::ReadEntry<SYMINFO>(fst, inspector::SYMBOLS, slice.entry + i);
            if (!symbol) return;
            use(Symbol{slice.first + i, *symbol});
        }
    }
}

}  // namespace scan695::ask
