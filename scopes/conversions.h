// The input's codes for memory, storage and registers, turned into those of the database and of the
// STF file.
#pragma once

#include <cstdint>

namespace scan695 {

// FST memory type for a memory id of the input, of which the low 4 bits count.
int8_t CvtTkMemType(uint32_t id);

// FST storage class for the storage word of a lifetime mark, of which the low 3 bits count: 1 auto,
// 2 register, 3 static. Any other ends the run.
uint8_t CvtTkStorageClass(uint32_t word);

inline constexpr uint32_t REGISTER_NAME_SIZE = 8;  // "R15,R15" and a NUL

// The register code of the STF file for a register value of the C166 family, and its name.
uint32_t outRegName(uint32_t value, char (&text)[REGISTER_NAME_SIZE]);

}  // namespace scan695
