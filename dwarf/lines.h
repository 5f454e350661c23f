// The line programs of .debug_line.
#pragma once

#include <string_view>

#include "dwarf/bytes.h"
#include "dwarf/code_map.h"

namespace scan695::dwarf {

// Appends the line program of a unit, whose lines all lie in one file, and gives its offset. A
// sequence ends where a line's cover is not continued by the next line.
uint32_t AppendLineProgram(Bytes& out, const CodeMap& map, uint32_t unit, std::string_view file);

}  // namespace scan695::dwarf
