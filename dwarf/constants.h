// The numbers of DWARF 4 that this emitter writes, under the names of the standard without DW_.
#pragma once

#include <cstdint>
#include <string_view>

namespace scan695::dwarf {

enum Tag : uint8_t {
    TAG_ARRAY_TYPE = 0x01,
    TAG_ENUMERATION_TYPE = 0x04,
    TAG_FORMAL_PARAMETER = 0x05,
    TAG_LABEL = 0x0A,
    TAG_LEXICAL_BLOCK = 0x0B,
    TAG_MEMBER = 0x0D,
    TAG_POINTER_TYPE = 0x0F,
    TAG_COMPILE_UNIT = 0x11,
    TAG_STRUCTURE_TYPE = 0x13,
    TAG_SUBROUTINE_TYPE = 0x15,
    TAG_UNION_TYPE = 0x17,
    TAG_SUBRANGE_TYPE = 0x21,
    TAG_BASE_TYPE = 0x24,
    TAG_ENUMERATOR = 0x28,
    TAG_SUBPROGRAM = 0x2E,
    TAG_VARIABLE = 0x34,
    TAG_UNSPECIFIED_TYPE = 0x3B,
};

enum Attribute : uint8_t {
    AT_LOCATION = 0x02,
    AT_NAME = 0x03,
    AT_BYTE_SIZE = 0x0B,
    AT_BIT_SIZE = 0x0D,
    AT_STMT_LIST = 0x10,
    AT_LOW_PC = 0x11,
    AT_HIGH_PC = 0x12,
    AT_LANGUAGE = 0x13,
    AT_CONST_VALUE = 0x1C,
    AT_PRODUCER = 0x25,
    AT_PROTOTYPED = 0x27,
    AT_UPPER_BOUND = 0x2F,
    AT_ADDRESS_CLASS = 0x33,
    AT_DATA_MEMBER_LOCATION = 0x38,
    AT_DECLARATION = 0x3C,
    AT_ENCODING = 0x3E,
    AT_EXTERNAL = 0x3F,
    AT_FRAME_BASE = 0x40,
    AT_TYPE = 0x49,
    AT_RANGES = 0x55,
    AT_DESCRIPTION = 0x5A,
    AT_DATA_BIT_OFFSET = 0x6B,
};

enum Form : uint8_t {
    FORM_ADDR = 0x01,
    FORM_DATA2 = 0x05,
    FORM_DATA4 = 0x06,
    FORM_DATA1 = 0x0B,
    FORM_SDATA = 0x0D,
    FORM_STRP = 0x0E,
    FORM_UDATA = 0x0F,
    FORM_REF_ADDR = 0x10,
    FORM_REF4 = 0x13,
    FORM_SEC_OFFSET = 0x17,
    FORM_EXPRLOC = 0x18,
    FORM_FLAG_PRESENT = 0x19,
};

enum Operation : uint8_t {
    OP_ADDR = 0x03,
    OP_REG0 = 0x50,
    OP_BREG0 = 0x70,
    OP_REGX = 0x90,
    OP_FBREG = 0x91,
    OP_BREGX = 0x92,
    OP_PIECE = 0x93,
};

enum Encoding : uint8_t {
    ATE_BOOLEAN = 0x02,
    ATE_FLOAT = 0x04,
    ATE_SIGNED = 0x05,
    ATE_SIGNED_CHAR = 0x06,
    ATE_UNSIGNED = 0x07,
    ATE_UNSIGNED_CHAR = 0x08,
};

enum SourceLanguage : uint16_t { LANG_C89 = 0x0001, LANG_ASSEMBLER = 0x8001 };

enum LineOperation : uint8_t {
    LNS_COPY = 0x01,
    LNS_ADVANCE_PC = 0x02,
    LNS_ADVANCE_LINE = 0x03,
    LNE_END_SEQUENCE = 0x01,
    LNE_SET_ADDRESS = 0x02,
};

inline constexpr uint16_t VERSION = 4;
inline constexpr uint16_t ARANGES_VERSION = 2;
inline constexpr uint8_t ADDRESS_SIZE = 4;
inline constexpr uint32_t BASE_SELECTION = 0xFFFFFFFF;  // in a list: a new base address follows
inline constexpr std::string_view PRODUCER = "scan695";

}  // namespace scan695::dwarf
