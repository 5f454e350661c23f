// Registers of the C166 family as the STF file names them.
#pragma once

#include <cstdint>

namespace scan695 {

inline constexpr uint32_t REGISTER_NAME_SIZE = 8;  // "R15,R15" and a NUL

// The register code of the STF file for a register value of the C166 family, and its name.
uint32_t outRegName(uint32_t value, char (&text)[REGISTER_NAME_SIZE]);

}  // namespace scan695
