// What a processor is: one table with a row for each kind of processor, which holds all that the
// system does differently for it. The first name of the file chooses the row. A processor that
// needs nothing but other values is a new row here (and one in docs/input.md).
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "store/records.h"
#include "store/tables.h"

namespace scan695 {

// How bitfields are placed, see types/bitfields.
enum class BitfieldRule : uint8_t {
    STORAGE_UNITS,  // units of the largest type that the struct has room for
    ANCHOR_BYTES,   // the byte that holds the field, or more of them
};

// A basic type of the input above those that all processors share.
struct ExtraType {
    uint32_t tk_ti;
    BasicType type;
};

struct ProcessorKind {
    const char* prefix;        // of the file's first name, in any case; the first match decides
    const char* checked_name;  // the whole name that Check knows; null for none
    const char* cpu;           // value of the CPU Attrib; null for none
    uint8_t scan_code;         // FstHeader::processor during the scan,
    uint8_t file_code;         // and in the finished header
    bool model_letter;         // the letter behind the prefix tells the memory model
    uint32_t ScanC166;
    uint32_t C166Flag;           // register codes, small enumerations, see stf/stf_state
    uint8_t small_pointer_size;  // in bytes
    uint8_t large_pointer_size;  // of functions too: the PointerSize
    BitfieldRule bitfields;
    std::array<uint8_t, NOF_BASIC_SIZES> basic_sizes;  // in bytes, see store/tables
    std::span<const ExtraType> extra_types;
};

inline constexpr ExtraType C166_TYPES[] = {{72, TYPE_UINT}, {73, TYPE_INT}};
inline constexpr ExtraType TRICORE_TYPES[] = {
    {26, TYPE_ULONG}, {27, TYPE_ULONG}, {28, TYPE_USHORT}};

inline constexpr ProcessorKind PROCESSORS[] = {
    {.prefix = "296sa_",
     .checked_name = nullptr,
     .cpu = nullptr,
     .scan_code = PROCESSOR_C166_FAMILY,
     .file_code = PROCESSOR_C166_FAMILY,
     .model_letter = true,
     .ScanC166 = 0,
     .C166Flag = 0,
     .small_pointer_size = 2,
     .large_pointer_size = 3,
     .bitfields = BitfieldRule::STORAGE_UNITS,
     .basic_sizes = {0, 1, 1, 2, 2, 2, 2, 4, 4, 4, 4, 4, 1},
     .extra_types = {}},
    {.prefix = "80166",
     .checked_name = "80166",
     .cpu = "C166",
     .scan_code = PROCESSOR_C166_FAMILY,
     .file_code = PROCESSOR_C166,
     .model_letter = false,
     .ScanC166 = 1,
     .C166Flag = 1,
     .small_pointer_size = 2,
     .large_pointer_size = 2,
     .bitfields = BitfieldRule::STORAGE_UNITS,
     .basic_sizes = {0, 1, 1, 2, 2, 2, 2, 4, 4, 4, 4, 4, 1},
     .extra_types = C166_TYPES},
    {.prefix = "tri",
     .checked_name = "TRI",
     .cpu = "Tricore",
     .scan_code = PROCESSOR_TRICORE,
     .file_code = PROCESSOR_TRICORE,
     .model_letter = false,
     .ScanC166 = 0,
     .C166Flag = 0,
     .small_pointer_size = 4,
     .large_pointer_size = 4,
     .bitfields = BitfieldRule::ANCHOR_BYTES,
     .basic_sizes = {0, 1, 1, 2, 2, 4, 4, 4, 4, 4, 8, 8, 1},
     .extra_types = TRICORE_TYPES},
};

// The row of a name; null without one.
[[nodiscard]] const ProcessorKind* FindProcessor(const char* name);

// Makes the processor of that name the one of the run: sets Input.Processor and ScanC166, the
// header's processor and model_flags, BasicTypeSizes and PointerSize. A name that no processor has
// ends the run.
const ProcessorKind& SetProcessor(const char* name);

// Sets bit 0 of model_flags, and bit 1 for the extended model.
void SetModelFlags(bool extended);

}  // namespace scan695
