#include "input/cursor.h"

#include <algorithm>
#include <cstring>

#include "report/report.h"

namespace scan695 {

namespace {

constexpr uint32_t MAX_NESTING = 1000;

}  // namespace

void StopAtEndOfInput() {
    ReportAndStop("Unexpected end of file at %x\n", Input.InputLength);
}

void SeekInput(uint32_t offset) {
    if (offset >= Input.InputLength) StopAtEndOfInput();
    Input.InputCursor = offset;
}

int ReadLongNumber(uint32_t& value) {
    const uint8_t first = PeekByte();
    if (first > 0x88) return 0;
    ++Input.InputCursor;
    if (first == 0x80) return 0;
    if (first > 0x84) ReportAndStop("Numbers longer than 32 bits are not supported\n");
    const uint32_t count = first - 0x80U;
    const uint8_t* bytes = TakeBytes(count);
    uint32_t number = 0;
    for (uint32_t i = 0; i < count; ++i) number = number << 8 | bytes[i];
    value = number;
    return 1;
}

uint32_t ReadName(char* buffer, uint32_t size) {
    const uint32_t length = PeekByte();
    if (length >= 0x80) return 0;
    ++Input.InputCursor;
    const uint8_t* text = TakeBytes(length);
    const uint32_t kept = std::min(length, size - 1);
    std::memcpy(buffer, text, kept);
    buffer[kept] = '\0';
    return std::min(length, size);
}

uint32_t LastOffset() {
    return Input.InputCursor - 1;
}

void UnexpectedRecord() {
    ReportAndStop("Unexpected record at %x\n", LastOffset());
}

void UnexpectedRecordByte(uint8_t byte) {
    ReportAndStop("Unexpected record=%x at %x\n", static_cast<uint32_t>(byte), LastOffset());
}

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#endif
void StopAtLastOffset(const char* format) {
    ReportAndStop(format, LastOffset());
}
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

NestingGuard::NestingGuard(uint32_t& depth) : depth_(depth) {
    if (++depth_ > MAX_NESTING) ReportAndStop("Nesting too deep at %x\n", LastOffset());
}

}  // namespace scan695
