// Text without regard to case. Letters are A to Z and a to z only, on every platform and in every
// locale; bytes compare as unsigned.
#pragma once

#include <cstddef>

namespace scan695 {

// The byte in lower case.
inline unsigned char LowerByte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

// Turns the letters of a NUL-terminated text into upper case, in place.
void UpperCaseInPlace(char* text);

// Compare NUL-terminated texts with letters taken in lower case, whole or over the first `count`
// bytes: below, at or above 0.
int CompareNoCase(const char* a, const char* b);
int CompareNoCase(const char* a, const char* b, size_t count);

}  // namespace scan695
