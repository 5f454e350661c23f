// Lifetimes that have no end of their own end with the block around them. The symbol is stored and
// written with an open end; when its block closes, the last location in the image gets the block's
// end address. The STF text keeps the open end.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// A record of the BlockSymbolTable whose last location may be open, so that a block's end need not
// look at all of its symbols.
struct OpenLifetime {
    uint32_t symbol;  // record number
    uint32_t place;   // image offset where the last location stands by its count
    bool stored;      // it does stand there: a list above 65,535 bytes is cut when it is stored
};

// Notes a symbol with locations that is about to become record `symbol` of the BlockSymbolTable.
void WatchLifetime(uint32_t symbol, const SYMINFO& record, uint32_t nof_locs, const LOCINFO& last);

// Ends the open lifetimes of the block symbols from `first_symbol` on, inner blocks included. A
// location that cannot be reached ends the run.
void CloseLifetimes(uint32_t first_symbol, uint32_t end_address);

}  // namespace scan695
