// Words for the numbers in the records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace scan695::inspector {

std::string ProcessorWord(uint8_t processor);
std::string MemoryWord(int mem_type);
std::string StorageWord(uint8_t storage_class);
std::string TypeTagWord(uint8_t type_tag);
std::string BasicTypeWord(uint32_t type_index);

// True for the basic types that records hold.
bool IsBasicType(uint32_t type_index);

// The register that the value of a register variable tells, as in "R12", "RL3" or "R13,R12"; empty
// for a TriCore, whose values have no names.
std::string RegisterWord(uint8_t processor, uint32_t value);

std::string HexText(uint32_t number);

// A name for the console: all but printable ASCII, and the backslash, as in "\x1b".
std::string Printable(std::string_view bytes);

}  // namespace scan695::inspector
