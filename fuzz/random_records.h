// Records made at random after patterns. Names, indexes, types and addresses come from small pools,
// so that they meet one another.
#pragma once

#include <cstdint>
#include <random>
#include <string_view>

#include "builder/bytes.h"

namespace scan695::fuzz {

using Random = std::minstd_rand;

inline uint32_t Below(Random& random, size_t limit) {
    return static_cast<uint32_t>(random() % limit);
}

// A pattern is text for `Hex` in which `i` stands for the index, and other letters, unless they are
// digits or quoted, for one of their patterns in random_records.cpp, chosen at random.
builder::Bytes Grow(Random& random, std::string_view pattern, uint32_t index = 0);

}  // namespace scan695::fuzz
