// Forward references among the types of the symbols.
#pragma once

namespace scan695 {

// Replaces them by the type that they stood for, or by void. For the end of the scan, behind
// UpdateTypes; the STF text is written by then.
void UpdateSymbolTypes();

}  // namespace scan695
