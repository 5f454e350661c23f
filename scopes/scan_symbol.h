// Reads one symbol of a scope: the run of records that share its index.
//
//     F0 idx name                          NN, names it
//     F1 CE idx type kind numbers          ATN, says what it is
//     E2 CE idx value                      ASN, as many as the kind asks for
//     F0 idx name                          NN again, skipped
//     F1 CE idx type 63 code count         59: a parameter; 70: a lifetime mark with 3 or 4 ASN
#pragma once

#include <cstdint>

namespace scan695 {

// Called behind the byte F0. Adds the symbol, if one comes of it, to the current module and block,
// and raises `unterminated` for a lifetime that has no end of its own.
void ScanSymbol(uint32_t& unterminated);

}  // namespace scan695
