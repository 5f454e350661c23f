// The sizes of the basic types and of a pointer, which follow from the processor of the file. The
// BasicTypeSizes stand at the end of the FST file.
#pragma once

#include <cstdint>

namespace scan695 {

inline constexpr uint32_t NOF_BASIC_SIZES = 13;  // void to bit

struct BasicTypeState {
    // In bytes, by basic type: void, uchar, char, ushort, short, uint, int, ulong, long, float,
    // double, ldouble, bit.
    uint8_t BasicTypeSizes[NOF_BASIC_SIZES] = {0, 1, 1, 2, 2, 2, 2, 4, 4, 4, 4, 4, 1};
    uint32_t PointerSize = 0;  // in bytes: 2, 3 or 4 once the processor is known
};
extern BasicTypeState BasicTypes;

// An index above 12 is ignored, and has the size 0.
void SetBasicTypeSize(uint32_t index, uint8_t size);
uint32_t GetBasicTypeSize(uint32_t index);

}  // namespace scan695
