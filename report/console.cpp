#include "report/console.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "base/number_text.h"
#include "platform/files.h"

namespace scan695 {

namespace {

constexpr size_t BLOCK = 0x10000;

struct Console {
    // A host may end the process in the middle of a run, from a signal handler or another thread.
    ~Console() { FlushLines(); }

    char* Limit() { return text + BLOCK; }

    char text[BLOCK + LINE_ROOM];  // a line begins in the block
    size_t used = 0;
    bool in_run = false;
    bool collects = false;
};
Console Lines;

char* Fill(char* begin, const char* end, const Conversion& conversion) {
    const auto length = static_cast<size_t>(end - begin);
    const size_t missing = conversion.width - length;
    std::memmove(begin + missing, begin, length);
    std::memset(begin, conversion.zeros ? '0' : ' ', missing);
    return begin + conversion.width;
}

char* Digits(char* out, const Conversion& conversion, uint32_t number) {
    switch (conversion.letter) {
        case 'd':
            return DecimalText(out, static_cast<int32_t>(number));
        case 'u':
            return UnsignedText(out, number);
        case 'X':
            return HexText(out, number, UPPER_CASE);
        default:
            if (conversion.prefix && number != 0) *out++ = '0', *out++ = 'x';
            return HexText(out, number);
    }
}

char* AppendNumber(char* out, const Conversion& conversion, uint32_t number) {
    if (conversion.letter == 'c') {
        *out = static_cast<char>(number);
        return out + 1;
    }
    char* end = Digits(out, conversion, number);
    return end - out < conversion.width ? Fill(out, end, conversion) : end;
}

// A text that the block cannot take makes room for itself.
char* AppendText(char* out, const char* text) {
    const size_t length = std::strlen(text);
    if (static_cast<ptrdiff_t>(length) > Lines.Limit() - out) {
        Lines.used = static_cast<size_t>(out - Lines.text);
        FlushLines();
        out = Lines.text;
        if (length > BLOCK) {
            std::fwrite(text, 1, length, stdout);
            return out;
        }
    }
    return std::copy_n(text, length, out);
}

}  // namespace

void StartCollectingLines() {
    Lines.in_run = true;
}

void StopCollectingLines() {
    Lines.in_run = false;
    FlushLines();
}

void FlushLines() {
    if (Lines.used != 0) std::fwrite(Lines.text, 1, Lines.used, stdout);
    Lines.used = 0;
    Lines.collects = Lines.in_run && IsBlockBuffered(stdout);
}

void AppendLine(const char* form, const LineValue* values) {
    char* out = Lines.text + Lines.used;
    while (*form != '\0') {
        if (*form != '%') {
            *out++ = *form++;
            continue;
        }
        const Conversion conversion = ReadConversion(++form);
        if (conversion.letter == 's')
            out = AppendText(out, values++->text);
        else
            out = AppendNumber(out, conversion, values++->number);
    }
    Lines.used = static_cast<size_t>(out - Lines.text);
    if (!Lines.collects || Lines.used >= BLOCK) FlushLines();
}

}  // namespace scan695
