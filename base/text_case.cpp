#include "base/text_case.h"

#include <cstdint>

namespace scan695 {

void UpperCaseInPlace(char* text) {
    for (; *text != '\0'; ++text)
        if (*text >= 'a' && *text <= 'z') *text = static_cast<char>(*text - ('a' - 'A'));
}

int CompareNoCase(const char* a, const char* b) {
    return CompareNoCase(a, b, SIZE_MAX);
}

int CompareNoCase(const char* a, const char* b, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const int x = LowerByte(a[i]);
        const int y = LowerByte(b[i]);
        if (x != y) return x - y;
        if (x == 0) return 0;
    }
    return 0;
}

}  // namespace scan695
