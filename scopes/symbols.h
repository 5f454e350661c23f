// The one way of a symbol into the tables and the STF file.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// Stores a symbol and writes its STF text. The record comes with value, module, block, type_index,
// storage_class and mem_type filled and all else 0; the rest is filled here. The name is cut to 31
// characters in the caller's buffer. `locs` are copied; the caller keeps them. No memory ends the
// run.
void AddSymbol(SYMINFO& record, char* name, uint32_t nof_locs, const LOCINFO* locs);

// Replaces the forward references among the types of the symbols: by the type that they stood for,
// or by void. For the end of the scan, behind UpdateTypes; the STF text is written by then.
void UpdateSymbolTypes();

}  // namespace scan695
