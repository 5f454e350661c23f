// Which code belongs to which block. An address belongs to one block of a scope at most: where
// blocks of one scope overlap, to the last one in the order of the block address index, and never
// to more than the block around it has.
#pragma once

#include <vector>

#include "dwarf/program.h"
#include "dwarf/stretches.h"

namespace scan695::dwarf {

// By block; nothing for one that was never closed or is hidden by others.
using BlockCode = std::vector<std::vector<Stretch>>;

BlockCode VisibleCode(const Program& program);

}  // namespace scan695::dwarf
