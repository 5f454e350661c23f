// A mark in the life of a variable, as the input gives it.
#pragma once

#include <cstdint>

namespace scan695 {

// One mark: from PC on the variable is at addr, or is no longer there. The names are those of the
// trace.
struct TkLoc {
    uint32_t PC;
    uint32_t sc;    // low 3 bits: storage class in the input's numbers; bit 3: an end mark
    uint32_t addr;  // address, stack offset or register value
    uint32_t mem;   // memory word, 0 without one

    static constexpr uint32_t END = 8;
    bool IsEnd() const { return (sc & END) != 0; }
};

}  // namespace scan695
