// Target memory on its way from the load records: every chunk goes into the collection of the Code
// records of the STF file and, with DebugMode, into the CodeTable of the FST store.
#pragma once

#include <cstdint>

namespace scan695 {

inline constexpr uint32_t MAX_CHUNK = 256;  // bytes of a chunk

// Adds a chunk; a size of 0 does nothing. The bytes are those of the input image, which must stay
// until the Code records are written. No memory ends the run.
void AddCode(uint8_t mem_type, const uint8_t* bytes, uint32_t address, uint16_t size,
             int32_t module);

// Ends the run with "Error: not enough memory\n" when `repeats` times `size` bytes more would take
// the collected code to 2^31 bytes or beyond.
void RequireRoomForCode(uint32_t size, uint32_t repeats);

}  // namespace scan695
