// Lifetimes that have no end of their own end with the block around them. The symbol is stored and
// written with an open end; when its block closes, the last location in the image gets the block's
// end address. The STF text keeps the open end.
#pragma once

#include <cstdint>
#include <span>

#include "store/records.h"

namespace scan695 {

// Notes a symbol with locations that is about to become record `symbol` of the BlockSymbolTable.
void WatchLifetime(uint32_t symbol, const SYMINFO& record, std::span<const LOCINFO> locations);

// Ends the open lifetimes of the block symbols from `first_symbol` on, inner blocks included. A
// location that cannot be reached ends the run.
void CloseLifetimes(uint32_t first_symbol, uint32_t end_address);

}  // namespace scan695
