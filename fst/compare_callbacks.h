// The orders of the indexes, as compare callbacks on record numbers of the working arrays. Each
// gives -1, 0 or 1, CompareNames any sign.
#pragma once

#include <cstdint>

namespace scan695 {

int CompareTypes(uint32_t a, uint32_t b);            // here_type_index
int CompareBlocks(uint32_t a, uint32_t b);           // address, size descending, parent
int CompareSymbolAddresses(uint32_t a, uint32_t b);  // mem_type, value
int CompareNames(uint32_t a, uint32_t b);            // text without regard to case
int CompareLineAddresses(uint32_t a, uint32_t b);    // address, number
int CompareLineNumbers(uint32_t a, uint32_t b);      // number, address
int CompareCode(uint32_t a, uint32_t b);             // mem_type, address

}  // namespace scan695
