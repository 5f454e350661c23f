// Changes of object files that keep the header sound and work on the records of one part, so that
// runs die deep in the readers rather than at the door; block lengths need no repair, since readers
// take the end of a block from its end record.
#pragma once

#include <functional>

#include "builder/object_file.h"
#include "fuzz/random_records.h"

namespace scan695::fuzz {

// Changes the bytes of a record in place: data, size, the most that it may become; gives the new
// size.
using ByteMutation = std::function<size_t(uint8_t*, size_t, size_t)>;

// Changes a few records of one part.
void Mutate(Random& random, builder::ObjectFile& file, const ByteMutation& change_bytes);
// A part of the other file, whole or a few of its records, goes into the first one. Gives false
// where the other one has none.
bool MixIn(Random& random, builder::ObjectFile& file, const builder::ObjectFile& other);

}  // namespace scan695::fuzz
