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

// The next byte; the next two, the first one in the low half.
uint8_t ReadByte();
uint16_t ReadCode();

// A number: 00 to 7F stand for themselves, 81 to 84 announce that many bytes, high byte first. 0
// without a value: 80 means an omitted field and is consumed, 89 and above is no number and stays.
// 85 to 88 end the run. Without a value `value` keeps its contents.
int ReadNumber(uint32_t& value);
// A number that must be there, else UnexpectedRecord.
uint32_t RequireNumber();
// A number that may be absent and then counts as `otherwise`.
uint32_t OptionalNumber(uint32_t otherwise = 0);
// A number that must be there and equal `expected`, else UnexpectedRecord.
void RequireIndex(uint32_t expected);

// A name: a length byte below 80 and that many bytes. The text is cut to size - 1 characters and
// ends in a NUL; the cursor passes all of it. Gives the length read, `size` for a name that was
// cut, and 0 for an empty name. 80 and above is no name: 0, the byte stays, the buffer keeps its
// contents.
uint32_t ReadName(char* buffer, uint32_t size);

// The byte at the cursor, which stays.
uint8_t PeekByte();
// Moves the cursor back over bytes that have just been read.
void UnreadBytes(uint32_t count);
// Moves the cursor to an offset of the input; one at or behind the end ends the run.
void SeekInput(uint32_t offset);
// Passes `count` bytes and gives their address in the image.
const uint8_t* TakeBytes(uint32_t count);
uint32_t BytesLeft();

// The offset of the last byte read, as messages name it: the cursor less 1.
uint32_t LastOffset();

// Ends the run with "Unexpected record at %lx" for the byte or code that has just been read.
[[noreturn]] void UnexpectedRecord();
// Ends the run with "Unexpected record=%x at %lx" for a byte that has just been read.
[[noreturn]] void UnexpectedRecordByte(uint8_t byte);
// Ends the run with the format, whose one argument is LastOffset().
[[noreturn]] void StopAtLastOffset(const char* format);

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
