// The input's codes for memory and storage, turned into those of the database.
#pragma once

#include <cstdint>

namespace scan695 {

// FST memory type for a memory id of the input, of which the low 4 bits count.
int8_t CvtTkMemType(uint32_t id);

// FST storage class for the storage word of a lifetime mark, of which the low 3 bits count: 1 auto,
// 2 register, 3 static. Any other ends the run.
uint8_t CvtTkStorageClass(uint32_t word);

}  // namespace scan695
