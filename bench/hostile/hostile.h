// Inputs made to be slow: one generator for each place where a search, a chain, a list or a sort
// could be led to do more work than the length of the input allows. Each makes an input of a size,
// and twice the size must not cost much more than twice the time.
#pragma once

#include <cstdint>
#include <span>

#include "builder/bytes.h"

namespace scan695::bench {

struct HostileCase {
    const char* name;
    builder::Bytes (*generate)(uint32_t size);
    uint32_t size;          // of the largest input; it is also made at a half and at a quarter
    bool debug;             // with DebugMode
    bool is_fst = false;    // the bytes are an FST file, which is verified, asked and compared
    bool may_stop = false;  // the library refuses the input, and has to do so quickly
};

std::span<const HostileCase> HostileTypes();
std::span<const HostileCase> HostileScopes();
std::span<const HostileCase> HostileTables();
std::span<const HostileCase> HostileFst();

}  // namespace scan695::bench
