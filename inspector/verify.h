// Checks an FST file against everything that the format promises.
#pragma once

#include <string>
#include <vector>

#include "inspector/reader.h"

namespace scan695::inspector {

// One line for each violation; empty for a sound file. Sound is what the converter writes, oddities
// included: counts of 16 bits that wrapped, lines in front of the first module, references to types
// that never came, overlapping code.
std::vector<std::string> Verify(const Fst& fst);

}  // namespace scan695::inspector
