// The attribute kinds: what an ATN record says a symbol is, which numbers and values follow, and
// what record comes of them.
#pragma once

#include <cstdint>

#include "input/cursor.h"
#include "store/records.h"

namespace scan695 {

// One symbol while it is read.
struct SymbolScan {
    char name[SYMBOL_NAME_SIZE] = {};
    uint32_t idx = 0;    // binds the records of the symbol together
    uint32_t tk_ti = 0;  // its type in the input's numbers
    uint32_t kind = 0;
    uint32_t value = 0;
    uint8_t storage_class = STORAGE_GLOBAL;
    int8_t mem = MEM_UNKNOWN;
};

// Reads what follows the kind and fills value, storage class and memory type. False when no symbol
// comes of the record. An unknown kind and a missing field end the run.
bool ReadSymbolKind(SymbolScan& symbol);

}  // namespace scan695
