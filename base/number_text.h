// Integers to text, without a terminating NUL: the buffers are the STF writers' own. Each function
// writes at `out`, which has room for MAX_NUMBER_TEXT bytes, and returns the end of what it wrote.
#pragma once

#include <cstdint>

namespace scan695 {

inline constexpr int MAX_NUMBER_TEXT = 11;  // "-2147483648"

// Radix 10 with a sign, no leading zeros.
char* DecimalText(char* out, int32_t value);

// Radix 16 as unsigned, lower case, no prefix, no leading zeros.
char* HexText(char* out, uint32_t value);

}  // namespace scan695
