#include "input/cursor.h"

#include <algorithm>
#include <cstring>

#include "report/report.h"

namespace scan695 {

namespace {

constexpr uint32_t MAX_NESTING = 1000;

[[noreturn]] void StopAtEndOfInput() {
    ReportAndStop("Unexpected end of file at %x\n", Input.InputLength);
}

}  // namespace

uint32_t BytesLeft() {
    return Input.InputLength - Input.InputCursor;
}

uint8_t PeekByte() {
    if (Input.InputCursor >= Input.InputLength) StopAtEndOfInput();
    return Input.InputImage[Input.InputCursor];
}

uint8_t ReadByte() {
    const uint8_t byte = PeekByte();
    ++Input.InputCursor;
    return byte;
}

uint16_t ReadCode() {
    const uint8_t* bytes = TakeBytes(2);
    return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}

const uint8_t* TakeBytes(uint32_t count) {
    if (count > BytesLeft()) StopAtEndOfInput();
    const uint8_t* bytes = Input.InputImage + Input.InputCursor;
    Input.InputCursor += count;
    return bytes;
}

void UnreadBytes(uint32_t count) {
    Input.InputCursor -= count;
}

void SeekInput(uint32_t offset) {
    if (offset >= Input.InputLength) StopAtEndOfInput();
    Input.InputCursor = offset;
}

int ReadNumber(uint32_t& value) {
    const uint8_t first = PeekByte();
    if (first > 0x88) return 0;
    ++Input.InputCursor;
    if (first < 0x80) {
        value = first;
        return 1;
    }
    if (first == 0x80) return 0;
    if (first > 0x84) ReportAndStop("Numbers longer than 32 bits are not supported\n");
    const uint32_t count = first - 0x80U;
    const uint8_t* bytes = TakeBytes(count);
    uint32_t number = 0;
    for (uint32_t i = 0; i < count; ++i) number = number << 8 | bytes[i];
    value = number;
    return 1;
}

uint32_t RequireNumber() {
    uint32_t value = 0;
    if (ReadNumber(value) == 0) UnexpectedRecord();
    return value;
}

uint32_t OptionalNumber(uint32_t otherwise) {
    ReadNumber(otherwise);
    return otherwise;
}

void RequireIndex(uint32_t expected) {
    if (RequireNumber() != expected) UnexpectedRecord();
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
