// The primitives that every reader of the input uses. There is one cursor for the whole
// run; all bytes of the input enter through the operations below, each of which stops the run with
// "Unexpected end of file at %lx" when it would pass the end.
#pragma once

#include <cstdint>

#include "input/input_state.h"

namespace scan695 {

// Buffer sizes of the names of records.
inline constexpr uint32_t HEADER_NAME_SIZE = 192;
inline constexpr uint32_t BLOCK_NAME_SIZE = 256;
inline constexpr uint32_t PART_NAME_SIZE = 32;
inline constexpr uint32_t SYMBOL_NAME_SIZE = 33;
inline constexpr uint32_t SECTION_NAME_SIZE = 60;

// Ends the run with "Unexpected end of file at %lx".
[[noreturn]] void StopAtEndOfInput();
// Ends the run with "Unexpected record at %lx" for the byte or code that has just been read.
[[noreturn]] void UnexpectedRecord();
// Ends the run with "Unexpected record=%x at %lx" for a byte that has just been read.
[[noreturn]] void UnexpectedRecordByte(uint8_t byte);
// Ends the run with the format, whose one argument is LastOffset().
[[noreturn]] void StopAtLastOffset(const char* format);

inline uint32_t BytesLeft() {
    return Input.InputLength - Input.InputCursor;
}

// The byte at the cursor, which stays.
inline uint8_t PeekByte() {
    if (Input.InputCursor >= Input.InputLength) [[unlikely]]
        StopAtEndOfInput();
    return Input.InputImage[Input.InputCursor];
}

// Passes `count` bytes and gives their address in the image.
inline const uint8_t* TakeBytes(uint32_t count) {
    if (count > BytesLeft()) [[unlikely]]
        StopAtEndOfInput();
    const uint8_t* bytes = Input.InputImage + Input.InputCursor;
    Input.InputCursor += count;
    return bytes;
}

// The next byte; the next two, the first one in the low half.
inline uint8_t ReadByte() {
    return *TakeBytes(1);
}
inline uint16_t ReadCode() {
    const uint8_t* bytes = TakeBytes(2);
    return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}

// Moves the cursor back over bytes that have just been read.
inline void UnreadBytes(uint32_t count) {
    Input.InputCursor -= count;
}
// Moves the cursor to an offset of the input; one at or behind the end ends the run.
void SeekInput(uint32_t offset);

// A number that does not stand for itself, for ReadNumber.
int ReadLongNumber(uint32_t& value);

// A number: 00 to 7F stand for themselves, 81 to 84 announce that many bytes, high byte first. 0
// without a value: 80 means an omitted field and is consumed, 89 and above is no number and stays.
// 85 to 88 end the run. Without a value `value` keeps its contents.
inline int ReadNumber(uint32_t& value) {
    const uint8_t first = PeekByte();
    if (first >= 0x80) return ReadLongNumber(value);
    ++Input.InputCursor;
    value = first;
    return 1;
}
// A number that must be there, else UnexpectedRecord.
inline uint32_t RequireNumber() {
    uint32_t value = 0;
    if (ReadNumber(value) == 0) [[unlikely]]
        UnexpectedRecord();
    return value;
}
// A number that may be absent and then counts as `otherwise`.
inline uint32_t OptionalNumber(uint32_t otherwise = 0) {
    ReadNumber(otherwise);
    return otherwise;
}
// A number that must be there and equal `expected`, else UnexpectedRecord.
inline void RequireIndex(uint32_t expected) {
    if (RequireNumber() != expected) [[unlikely]]
        UnexpectedRecord();
}

// A name: a length byte below 80 and that many bytes. The text is cut to size - 1 characters and
// ends in a NUL; the cursor passes all of it. Gives the length read, `size` for a name that was
// cut, and 0 for an empty name. 80 and above is no name: 0, the byte stays, the buffer keeps its
// contents.
uint32_t ReadName(char* buffer, uint32_t size);

// The offset of the last byte read, as messages name it: the cursor less 1.
uint32_t LastOffset();

// The frame of a part reader: goes to the part's offset and puts the cursor back at the end.
class PartFrame {
  public:
    explicit PartFrame(uint32_t offset) : saved_(Input.InputCursor) { SeekInput(offset); }
    ~PartFrame() { Input.InputCursor = saved_; }
    PartFrame(const PartFrame&) = delete;
    PartFrame& operator=(const PartFrame&) = delete;

  private:
    uint32_t saved_;
};

// Counts one level of nesting for as long as it lives; more than 1,000 levels end the run with
// "Nesting too deep at %lx".
class NestingGuard {
  public:
    explicit NestingGuard(uint32_t& depth);
    ~NestingGuard() { --depth_; }
    NestingGuard(const NestingGuard&) = delete;
    NestingGuard& operator=(const NestingGuard&) = delete;

  private:
    uint32_t& depth_;
};

}  // namespace scan695
