// The CodeTable: the chunks of target memory in the order of the input, a CODEINFO and its bytes
// each. Only the post-processing reads it, so without DebugMode nothing but its size is kept.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

inline constexpr uint32_t MAX_CHUNK = 256;  // bytes of a chunk

// Appends a chunk of record.length bytes, at least one, and counts it. No memory, and a table of
// 2^31 bytes and more, end the run.
void AddToCodeTable(const CODEINFO& record, const uint8_t* bytes);

// Counts the chunks of `size` bytes, `repeats` times, where the table is not kept. A table that
// would have 2^31 bytes or more ends the run.
void CountInCodeTable(uint32_t size, uint32_t repeats);

// Ends the run with "Error: not enough memory\n" when `repeats` times `size` bytes more would take
// the collected code to 2^31 bytes or beyond.
void RequireRoomForCode(uint32_t size, uint32_t repeats);

}  // namespace scan695
