// Words for the numbers in the records.
#pragma once

#include <string>

#include "inspector/reader.h"

namespace scan695::inspector {

std::string ProcessorWord(uint8_t processor);
std::string MemoryWord(int mem_type);
std::string StorageWord(uint8_t storage_class);
std::string TypeTagWord(uint8_t type_tag);

// True for the basic types that records hold.
bool IsBasicType(uint32_t type_index);

// A type in words, as in "pointer to struct list" or "array[4] of char".
std::string TypeText(const Fst& fst, uint32_t type_index);

// The name at an offset; all but printable ASCII, and the backslash, as in "\x1b". A remark where
// there is no name.
std::string NameText(const Fst& fst, uint32_t offset);

}  // namespace scan695::inspector
