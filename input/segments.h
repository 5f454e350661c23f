// The SegmentTable (Input.SegmentTable): what the system knows of the segments of the module. The
// segment part fills it, the data part takes addresses and memory types from it, and section blocks
// of assembled modules may correct a memory type. It lives only during the scan.
#pragma once

#include <cstdint>

namespace scan695 {

// Adds an entry; a 51st is dropped with a trace line. A second entry of one number is never found.
void AddSegment(uint32_t index, uint8_t mem_type);

// Set a field of the first entry of that number; a number without entry gives a trace line only.
void SetSegmentSize(uint32_t index, uint32_t value);
void SetSegmentBase(uint32_t index, uint32_t value);
void SetSegmentOffset(uint32_t index, uint32_t value);
void SetSegmentMemType(uint32_t index, uint8_t mem_type);

// Of a number without entry the base is 0 and the memory type 6, with a trace line.
uint32_t GetSegmentBase(uint32_t index);
uint8_t GetSegmentMemType(uint32_t index);

// One trace line for each entry.
void PrintSegments();

}  // namespace scan695
