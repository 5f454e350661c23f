// Integers to text, without a terminating NUL: the buffers are the writers' own. Each function
// writes at `out`, which has room for MAX_NUMBER_TEXT bytes, and returns the end of what it wrote.
// What stands behind that end, up to MAX_NUMBER_TEXT bytes from `out`, may change.
#pragma once

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace scan695 {

inline constexpr int MAX_NUMBER_TEXT = 11;  // "-2147483648"

// The two digits of each byte, one pair behind the other.
using HexPairs = std::array<char, 512>;
constexpr HexPairs MakeHexPairs(const char* digits) {
    HexPairs pairs = {};
    for (size_t i = 0; i < 256; ++i) {
        pairs[2 * i] = digits[i >> 4];
        pairs[2 * i + 1] = digits[i & 15];
    }
    return pairs;
}
inline constexpr HexPairs LOWER_CASE = MakeHexPairs("0123456789abcdef");
inline constexpr HexPairs UPPER_CASE = MakeHexPairs("0123456789ABCDEF");

// Radix 10 as unsigned, no leading zeros.
inline char* UnsignedText(char* out, uint32_t value) {
    if (value >= 10) return std::to_chars(out, out + MAX_NUMBER_TEXT, value).ptr;
    *out = static_cast<char>('0' + value);
    return out + 1;
}

// Radix 10 with a sign, no leading zeros.
inline char* DecimalText(char* out, int32_t value) {
    if (value >= 0) return UnsignedText(out, static_cast<uint32_t>(value));
    *out = '-';
    return UnsignedText(out + 1, 0 - static_cast<uint32_t>(value));
}

// Radix 16 as unsigned, no prefix, no leading zeros. All eight digits are made and those behind the
// zeros taken: no loop, no branch.
inline char* HexText(char* out, uint32_t value, const HexPairs& pairs = LOWER_CASE) {
    constexpr int MAX_DIGITS = 8;
    char digits[2 * MAX_DIGITS] = {};
    for (size_t i = 0; i < 4; ++i)
        std::memcpy(digits + 2 * i, &pairs[2 * size_t{value >> (24 - 8 * i) & 0xFF}], 2);
    const int zeros = std::countl_zero(value | 1) / 4;
    std::memcpy(out, digits + zeros, MAX_DIGITS);
    return out + MAX_DIGITS - zeros;
}

}  // namespace scan695
