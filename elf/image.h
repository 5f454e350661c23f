// The memory image of a program as stretches of adjoining bytes.
#pragma once

#include <cstdint>
#include <vector>

#include "inspector/reader.h"

namespace scan695::elf {

// Bytes of the FST file.
struct Piece {
    uint64_t offset;
    uint64_t size;
};

struct Stretch {
    uint32_t address;
    uint64_t size;  // above 0; the end is at most 2^32
    uint8_t memory;
    std::vector<Piece> pieces;
};

// By ascending addresses; stretches of one memory neither touch nor overlap. Where blocks of one
// memory overlap, the later one in the file holds the bytes, as in a load; a block that passes the
// end of the address space goes on at 0.
std::vector<Stretch> BuildImage(const inspector::Fst& fst);

}  // namespace scan695::elf
