// The records of the FST database. The same bytes stand in the tables during the scan, in the
// image and in the FST file, so every structure here is a file format: little-endian, without
// padding, reserved bytes zero (creators value-initialise). Records refer to one another by record
// number or by image offset, never by pointer; an offset of 0 means that there is no item, a record
// number of -1 that there is no record.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace scan695 {

static_assert(std::endian::native == std::endian::little,
              "scan695 writes its records as they stand in memory: a little-endian machine is "
              "needed, or a byte-swapping layer in store/");

#define SCAN695_RECORD_SIZE(record, bytes) static_assert(sizeof(record) == (bytes))
#define SCAN695_FIELD_AT(record, field, bytes) static_assert(offsetof(record, field) == (bytes))

// Values of SYMINFO::storage_class and LOCINFO::storage_class.
enum StorageClass : uint8_t {
    STORAGE_GLOBAL = 0,
    STORAGE_STATIC = 1,
    STORAGE_AUTO = 2,
    STORAGE_REGISTER = 3,
};

// FST memory types. 1, 3, 4 and 5 arise from attributed types only.
enum MemType : int8_t {
    MEM_CODE = 0,
    MEM_DATA = 2,
    MEM_BIT_LOW = 4,
    MEM_BIT_HIGH = 5,
    MEM_UNKNOWN = 6,
    MEM_REGISTER = 8,
};

// Values of TYPEINFO::type_tag. Tags and basic types share one numbering.
enum TypeTag : uint8_t {
    TAG_NONE = 0,  // a cleared record: a typedef of one that did not exist
    TAG_POINTER = 0x23,
    TAG_ARRAY = 0x24,
    TAG_STRUCT = 0x25,
    TAG_UNION = 0x26,
    TAG_BITFIELD = 0x27,
    TAG_FUNCTION = 0x28,
    TAG_ATTRIBUTE = 0x29,
    TAG_ENUMERATION = 0x2B,
};

// The basic types that the system names; the whole list stands in stf/type_words.
enum BasicType : uint32_t {
    TYPE_VOID = 0,
    TYPE_UCHAR = 1,
    TYPE_CHAR = 2,
    TYPE_USHORT = 3,
    TYPE_SHORT = 4,
    TYPE_UINT = 5,
    TYPE_INT = 6,
    TYPE_ULONG = 7,
    TYPE_LONG = 8,
    TYPE_FLOAT = 9,
    TYPE_DOUBLE = 10,
    TYPE_LDOUBLE = 11,
    TYPE_BIT = 12,
    TYPE_LABEL = 34,
    TYPE_POINTER = 35,
    TYPE_STRINGLITERAL = 42,
};

inline constexpr uint32_t FIRST_TYPE_INDEX = 100;      // type indexes below it are basic types
inline constexpr uint32_t TYPE_MARKER_BIT = 0x800000;  // an unresolved forward reference
inline constexpr uint16_t ACCESS_HAS_LOCATIONS = 0x1000;
inline constexpr uint32_t OPEN_END = 0xFFFFFFFF;  // LOCINFO::end_address not known yet
inline constexpr uint32_t MAX_NAME_LENGTH = 31;   // characters of a stored name

inline constexpr bool IsTypeMarker(uint32_t type_index) {
    return (type_index & TYPE_MARKER_BIT) != 0;
}
// True for an index that should have a TYPEINFO: no basic type and no marker.
inline constexpr bool IsRecordType(uint32_t type_index) {
    return type_index >= FIRST_TYPE_INDEX && !IsTypeMarker(type_index);
}

// The head of the FST file, and during a run the live counters of the tables.
struct FstHeader {
    char magic[4];  // "FSTA"
    uint32_t modules_offs;
    uint32_t blocks_offs;
    uint32_t symbols_offs;
    uint32_t lines_offs;
    uint32_t types_offs;
    uint32_t code_offs;
    uint32_t ranges_offs;
    uint32_t module_name_index_offs;
    uint32_t block_addr_index_offs;
    uint32_t symbol_addr_index_offs;
    uint32_t symbol_name_index_offs;
    uint32_t line_addr_index_offs;
    uint32_t line_number_index_offs;
    uint32_t type_index_offs;
    uint32_t reserved_60;
    uint32_t basic_sizes_offs;
    uint32_t nof_modules;
    uint32_t nof_blocks;
    uint32_t nof_all_symbols;
    uint32_t nof_global_symbols;
    uint32_t nof_module_symbols;
    uint32_t nof_block_symbols;
    uint32_t nof_lines;
    uint32_t nof_types;
    uint32_t nof_code;
    uint32_t nof_ranges;
    int16_t max_module_name;
    int16_t max_symbol_name;
    int16_t max_block_symbols;
    uint8_t source_format;
    uint8_t processor;
    uint32_t start_address;
    uint8_t has_start_address;
    uint8_t format_version;
    uint8_t model_flags;
    uint8_t reserved_123;
    uint32_t global_line_index_offs;
    uint32_t reserved_128;
    uint32_t reserved_132;
};
SCAN695_RECORD_SIZE(FstHeader, 136);
SCAN695_FIELD_AT(FstHeader, module_name_index_offs, 32);
SCAN695_FIELD_AT(FstHeader, basic_sizes_offs, 64);
SCAN695_FIELD_AT(FstHeader, nof_modules, 68);
SCAN695_FIELD_AT(FstHeader, nof_ranges, 104);
SCAN695_FIELD_AT(FstHeader, max_module_name, 108);
SCAN695_FIELD_AT(FstHeader, source_format, 114);
SCAN695_FIELD_AT(FstHeader, start_address, 116);
SCAN695_FIELD_AT(FstHeader, model_flags, 122);
SCAN695_FIELD_AT(FstHeader, global_line_index_offs, 124);

// Values of FstHeader::processor.
enum Processor : uint8_t {
    PROCESSOR_C166_FAMILY = 12,
    PROCESSOR_TRICORE = 13,
    PROCESSOR_C166 = 17,  // an 80166, in the finished header only
};

struct MODULEINFO {
    uint32_t name_offs;
    uint32_t source_offs;
    uint32_t first_symbol;
    uint32_t nof_symbols;
    uint32_t first_line;
    uint16_t nof_lines;
    int8_t language;
    uint8_t reserved;
};
SCAN695_RECORD_SIZE(MODULEINFO, 24);
SCAN695_FIELD_AT(MODULEINFO, nof_lines, 20);
SCAN695_FIELD_AT(MODULEINFO, language, 22);

// Values of MODULEINFO::language.
enum Language : int8_t { LANGUAGE_C = 0, LANGUAGE_ASM = 1 };

struct LINEINFO {
    uint32_t address;
    int32_t module;
    uint16_t number;
    uint16_t reserved;
};
SCAN695_RECORD_SIZE(LINEINFO, 12);
SCAN695_FIELD_AT(LINEINFO, number, 8);

// Always followed by `length` bytes of target memory.
struct CODEINFO {
    uint32_t address;
    uint32_t length;
    int32_t module;
    uint8_t mem_type;
    uint8_t reserved[3];
};
SCAN695_RECORD_SIZE(CODEINFO, 16);
SCAN695_FIELD_AT(CODEINFO, mem_type, 12);

struct RANGEINFO {
    uint32_t module;
    uint32_t address;
    uint32_t length;
};
SCAN695_RECORD_SIZE(RANGEINFO, 12);

struct SYMINFO {
    uint32_t name_offs;
    uint32_t value;
    uint32_t size;
    int32_t module;
    int32_t block;
    uint32_t type_index;
    uint16_t access_mode;
    uint8_t storage_class;
    int8_t mem_type;
    uint16_t nof_locs;
    uint16_t reserved;
    uint32_t locinfo_offs;
};
SCAN695_RECORD_SIZE(SYMINFO, 36);
SCAN695_FIELD_AT(SYMINFO, type_index, 20);
SCAN695_FIELD_AT(SYMINFO, storage_class, 26);
SCAN695_FIELD_AT(SYMINFO, nof_locs, 28);
SCAN695_FIELD_AT(SYMINFO, locinfo_offs, 32);

struct BLOCKINFO {
    uint32_t address;
    uint32_t size;
    int32_t parent;
    int32_t module;
    uint32_t first_symbol;
    uint16_t nof_symbols;
    uint8_t is_function;
    uint8_t reserved;
};
SCAN695_RECORD_SIZE(BLOCKINFO, 24);
SCAN695_FIELD_AT(BLOCKINFO, nof_symbols, 20);
SCAN695_FIELD_AT(BLOCKINFO, is_function, 22);

struct LOCINFO {
    uint32_t value;
    uint8_t storage_class;
    int8_t mem_type;
    uint8_t exec_mem_type;
    int8_t fill;
    uint32_t beg_address;
    uint32_t end_address;
};
SCAN695_RECORD_SIZE(LOCINFO, 16);
SCAN695_FIELD_AT(LOCINFO, exec_mem_type, 6);
SCAN695_FIELD_AT(LOCINFO, beg_address, 8);

struct TYPEINFO {
    uint32_t here_type_index;
    TypeTag type_tag;  // a file may hold any other byte too
    uint8_t reserved[3];
    union Variant {
        struct Function {
            uint32_t type_index;
            uint8_t spec;
            uint8_t nof_params;
            uint8_t reserved_14[2];
            uint32_t params_offset;
            uint16_t return_offset;
            uint8_t reserved_22[2];
        } function;
        struct Array {
            uint32_t size;
            uint32_t nof_elem;
            uint32_t type_index;
            uint32_t reserved_20;
        } array;
        struct StructUnion {
            uint32_t name_offs;
            uint32_t size;
            uint32_t field_offs;
            uint16_t nof_elem;
            uint16_t reserved_22;
        } structunion;
        struct Enumeration {
            uint32_t name_offs;
            uint32_t field_offs;
            uint32_t nof_elem;
            uint32_t type_index;
        } enumeration;
        struct Bits {
            int8_t displacement;
            int8_t nof_bits;
            uint8_t reserved_10[2];
            uint32_t type_index;
            uint32_t reserved_16[2];
        } bits;
        // Attributes share the layout: type_index is the qualified type, spec the attribute byte.
        struct Pointer {
            uint32_t type_index;
            uint8_t spec;
            uint8_t ptr_size;
            uint16_t base;
            uint32_t reserved_16[2];
        } pointer;
    } u;
};
SCAN695_RECORD_SIZE(TYPEINFO, 24);
SCAN695_FIELD_AT(TYPEINFO, type_tag, 4);
SCAN695_FIELD_AT(TYPEINFO, u, 8);
SCAN695_RECORD_SIZE(TYPEINFO::Variant, 16);
SCAN695_FIELD_AT(TYPEINFO::Variant::Function, params_offset, 8);
SCAN695_FIELD_AT(TYPEINFO::Variant::StructUnion, nof_elem, 12);
SCAN695_FIELD_AT(TYPEINFO::Variant::Bits, type_index, 4);
SCAN695_FIELD_AT(TYPEINFO::Variant::Pointer, base, 6);

// The element of member, enumeration and parameter lists.
struct FIELDINFO {
    uint32_t value;
    uint32_t name_offs;
    uint32_t type_index;
    uint32_t reserved;
};
SCAN695_RECORD_SIZE(FIELDINFO, 16);

#undef SCAN695_RECORD_SIZE
#undef SCAN695_FIELD_AT

}  // namespace scan695
