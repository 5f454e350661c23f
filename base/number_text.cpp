#include "base/number_text.h"

#include <bit>

namespace scan695 {

char* DecimalText(char* out, int32_t value) {
    uint32_t rest = static_cast<uint32_t>(value);
    if (value < 0) {
        *out++ = '-';
        rest = 0 - rest;
    }
    char digits[MAX_NUMBER_TEXT];
    char* p = digits + sizeof digits;
    do {
        *--p = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    while (p != digits + sizeof digits) *out++ = *p++;
    return out;
}

char* HexText(char* out, uint32_t value) {
    int shift = (static_cast<int>(std::bit_width(value | 1U)) - 1) / 4 * 4;
    for (; shift >= 0; shift -= 4) *out++ = "0123456789abcdef"[(value >> shift) & 15];
    return out;
}

}  // namespace scan695
