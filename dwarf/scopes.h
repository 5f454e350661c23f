// The contents of a scope: its symbols, its blocks with theirs.
#pragma once

#include "dwarf/entries.h"
#include "dwarf/program.h"
#include "dwarf/types.h"
#include "dwarf/visible_code.h"

namespace scan695::dwarf {

// The sections that units refer to.
struct UnitSections {
    Bytes line;
    Bytes loc;
    Bytes ranges;
};

// Writes what is in the scope, as children of an entry that is written already, and their end.
// `base` is the base address of the unit.
void WriteScope(const Program& program, const BlockCode& code, uint32_t scope, uint32_t base,
                Types& types, UnitSections& sections, EntryWriter& writer);

}  // namespace scan695::dwarf
