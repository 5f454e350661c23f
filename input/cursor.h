// The image of the input and the primitives that every reader of it uses. There is one cursor for
// the whole run; all bytes of the input enter through the operations below, each of which stops the
// run with "Unexpected end of file at %lx" when it would pass the end.
#pragma once

#include <cstdint>
#include <string>

namespace scan695 {

// A run starts by assigning a new InputState; the image is owned by the run.
struct InputState {
    std::string InputPath;  // in upper case, for messages
    uint8_t* InputImage = nullptr;
    uint32_t InputLength = 0;  // below 2^31
    uint32_t InputCursor = 0;  // offset of the next byte to read, never above InputLength
};
extern InputState Input;

// Buffer sizes of the names of records.
inline constexpr uint32_t HEADER_NAME_SIZE = 192;
inline constexpr uint32_t BLOCK_NAME_SIZE = 256;
inline constexpr uint32_t PART_NAME_SIZE = 32;
inline constexpr uint32_t SYMBOL_NAME_SIZE = 33;
inline constexpr uint32_t SECTION_NAME_SIZE = 60;

// Two-byte record codes as ReadCode gives them: the first byte in the low half.
enum RecordCode : uint16_t {
    CODE_ATN = 0xCEF1,   // F1 CE
    CODE_ASN = 0xCEE2,   // E2 CE
    CODE_ATI = 0xC9F1,   // F1 C9
    CODE_ASI = 0xC9E2,   // E2 C9
    CODE_ASG = 0xC7E2,   // E2 C7
    CODE_BB1 = 0x01F8,   // F8 01
    CODE_BB2 = 0x02F8,   // F8 02
    CODE_BB3 = 0x03F8,   // F8 03
    CODE_BB5 = 0x05F8,   // F8 05
    CODE_BB10 = 0x0AF8,  // F8 0A
};

// First bytes of records.
enum RecordByte : uint8_t {
    BYTE_OPEN_BRACKET = 0xBE,
    BYTE_CLOSE_BRACKET = 0xBF,
    BYTE_LOW_FIRST = 0xCC,
    BYTE_HIGH_FIRST = 0xCD,
    BYTE_MB = 0xE0,
    BYTE_ME = 0xE1,
    BYTE_AS = 0xE2,
    BYTE_LR_RELOCATED = 0xE3,
    BYTE_LR_SPACES = 0xE4,
    BYTE_SB = 0xE5,
    BYTE_ST = 0xE6,
    BYTE_SA = 0xE7,
    BYTE_NI = 0xE8,
    BYTE_AD = 0xEC,
    BYTE_LD = 0xED,
    BYTE_NN = 0xF0,
    BYTE_AT = 0xF1,
    BYTE_TY = 0xF2,
    BYTE_RE = 0xF7,
    BYTE_BB = 0xF8,
    BYTE_BE = 0xF9,
    BYTE_LR = 0xFA,
    BYTE_N = 0xCE,
};

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
