// The way of a source line into its table.
#pragma once

#include <cstdint>

namespace scan695 {

// Stores a line of the current module and writes its STF record. Of the line number the low 16 bits
// count. Both kinds of line record, those of source files and those of assembled modules, come
// here.
void AddLine(uint32_t address, uint32_t number);

}  // namespace scan695
