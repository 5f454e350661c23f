// The search that keeps the external part from adding what the debug part has described.
#pragma once

namespace scan695 {

// True if a record of the GlobalSymbolTable has exactly this name. Symbols of modules and blocks do
// not count.
bool SymbolDefined(const char* name);

}  // namespace scan695
