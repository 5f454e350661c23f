// Records made at random, sound in themselves: names, indexes, types and addresses come from small
// pools, so that they meet one another.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "fuzz/object_parts.h"
#include "tests/support/bytes.h"

namespace scan695::fuzz {

using Random = std::minstd_rand;

inline uint32_t Below(Random& random, size_t limit) {
    return static_cast<uint32_t>(random() % limit);
}

uint32_t RandomNumber(Random& random);
// A few records that may stand in the part, behind an NN record of this index.
test::Bytes RandomRecords(Random& random, size_t part, uint32_t index);
// The debug part of up to `most` compiled modules.
test::Bytes RandomModules(Random& random, uint32_t most);
// The same for the debug part, inside a block of this code; 0 outside all blocks.
test::Bytes RandomDebugRecords(Random& random, uint8_t block, uint32_t index);
// A block around a body, inner or, where that may be, global.
test::Bytes RandomBlock(Random& random, const test::Bytes& body, bool global);

}  // namespace scan695::fuzz
