// Linked programs made at random, as compilers, assemblers and linkers write them: most convert up
// to the end. All that is there follows from the random numbers.
#pragma once

#include "builder/object_file.h"
#include "fuzz/random_records.h"

namespace scan695::fuzz {

builder::ObjectFile RandomProgram(Random& random);

}  // namespace scan695::fuzz
