// The units of modules, with their scopes and symbols, and of what is of no module.
#pragma once

#include "dwarf/code_map.h"
#include "dwarf/entries.h"
#include "dwarf/program.h"
#include "dwarf/scopes.h"
#include "dwarf/types.h"

namespace scan695::dwarf {

// Appends the unit (counted from 0; the one behind those of the modules is the program's) to what
// `writer` has.
void WriteUnit(const Program& program, const CodeMap& map, const BlockCode& code, uint32_t unit,
               Types& types, UnitSections& sections, EntryWriter& writer);

// True for a unit that has nothing in it: the program's, mostly.
bool IsEmptyUnit(const Program& program, const CodeMap& map, uint32_t unit);

}  // namespace scan695::dwarf
