// Which code belongs to which block. An address belongs to one block of a scope at most: where
// blocks of one scope overlap, to the last one in the order of the block address index, and never
// to more than the block or the unit around it has.
#pragma once

#include <vector>

#include "dwarf/code_map.h"
#include "dwarf/program.h"

namespace scan695::dwarf {

// By block; nothing for one that was never closed or is hidden by others.
using BlockCode = std::vector<std::vector<Stretch>>;

BlockCode VisibleCode(const Program& program, const CodeMap& map);

}  // namespace scan695::dwarf
