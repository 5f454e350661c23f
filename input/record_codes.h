// The vocabulary of the input: the codes of its records, letters, blocks and attributes by their
// names. docs/input.md tells what each of them holds and who reads it. The letters of type
// definitions are characters and stand in types/definition.cpp.
#pragma once

#include <cstdint>

namespace scan695 {

// First bytes of records.
enum RecordByte : uint8_t {
    BYTE_OPEN_BRACKET = 0xBE,
    BYTE_CLOSE_BRACKET = 0xBF,
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
    BYTE_REFUSED_FB = 0xFB,  // no tool writes these three into a segment part
    BYTE_REFUSED_FC = 0xFC,
    BYTE_REFUSED_FD = 0xFD,
};

// The alphabet, A at C1: second bytes of assignments and attributes, letters of segment types, and
// the byte order of the AD record (L and M: which byte comes first).
enum RecordLetter : uint8_t {
    LETTER_A = 0xC1,
    LETTER_B = 0xC2,
    LETTER_C = 0xC3,
    LETTER_D = 0xC4,
    LETTER_E = 0xC5,
    LETTER_F = 0xC6,
    LETTER_G = 0xC7,
    LETTER_I = 0xC9,
    LETTER_L = 0xCC,
    LETTER_M = 0xCD,
    LETTER_N = 0xCE,
    LETTER_P = 0xD0,
    LETTER_R = 0xD2,
    LETTER_S = 0xD3,
    LETTER_W = 0xD7,
};

// Blocks of the debug part: the byte behind BYTE_BB.
enum BlockKind : uint8_t {
    BB1 = 0x01,   // types of a module
    BB2 = 0x02,   // types of the program
    BB3 = 0x03,   // scopes of a compiled module
    BB4 = 0x04,   // a global function
    BB5 = 0x05,   // lines of a source file
    BB6 = 0x06,   // a static function, or a block inside a function
    BB10 = 0x0A,  // an assembled module
    BB11 = 0x0B,  // a section of an assembled module
};

// Two bytes as ReadCode gives them: the first one in the low half.
constexpr uint16_t CodeOf(uint8_t first, uint8_t second) {
    return static_cast<uint16_t>(first | second << 8);
}
inline constexpr uint16_t CODE_ASG = CodeOf(BYTE_AS, LETTER_G);
inline constexpr uint16_t CODE_ASI = CodeOf(BYTE_AS, LETTER_I);
inline constexpr uint16_t CODE_ASN = CodeOf(BYTE_AS, LETTER_N);
inline constexpr uint16_t CODE_ATI = CodeOf(BYTE_AT, LETTER_I);
inline constexpr uint16_t CODE_ATN = CodeOf(BYTE_AT, LETTER_N);

// What an ATN record tells: of a symbol, of the file (AD extension part), of the tools that made it
// (environment part).
enum AttributeCode : uint32_t {
    ATN_AUTO = 1,
    ATN_LIVING_REGISTER = 2,
    ATN_STATIC = 3,
    ATN_EXTERNAL_FUNCTION = 4,
    ATN_EXTERNAL_VARIABLE = 5,
    ATN_LINE = 7,
    ATN_GLOBAL = 8,
    ATN_LOCKED_REGISTER = 10,
    ATN_BASED = 12,
    ATN_CONSTANT = 16,
    ATN_ASM_SYMBOL = 19,
    ATN_FORMAT_VERSION = 37,
    ATN_FILE_FORMAT = 38,
    ATN_CASE = 39,
    ATN_MEMORY_MODEL = 40,
    ATN_DATE = 50,
    ATN_COMMAND_LINE = 51,
    ATN_LINK_STATUS = 52,
    ATN_HOST = 53,
    ATN_TOOL = 54,
    ATN_COMMENTS = 55,
    ATN_MISC_62 = 62,
    ATN_MISC_63 = 63,
    ATN_MISC_64 = 64,
    ATN_MISC_65 = 65,
};

// What the miscellaneous ATN records hold, told by a code of their own.
enum MiscCode : uint32_t {
    MISC_STACK_ADJUST = 51,  // under ATN_MISC_64, in a BB5 block
    MISC_PARAMETER = 59,     // these two under ATN_MISC_63, behind a symbol
    MISC_LIFETIME = 70,
};

// What an ATI record tells of a public symbol.
enum PublicCode : uint32_t {
    ATI_VARIABLE = 8,
    ATI_CONSTANT = 16,
    ATI_ASM_SYMBOL = 19,
    ATI_STATIC = 20,
};

}  // namespace scan695
