// The same global symbol can stand in its table more than once. The filter takes repeats out before
// anything is sorted; the first one of a group stays.
#pragma once

namespace scan695 {

// Repeats agree in value, type_index, mem_type and, byte for byte, in their name. The records that
// stay move up in the GlobalSymbolTable and nof_global_symbols and nof_all_symbols fall; the table
// keeps its size.
void FilterGlobalSymbols();

}  // namespace scan695
