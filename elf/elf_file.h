// Writes the ELF file: 32 bits, little-endian, executable. The one file that knows libelf.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "inspector/reader.h"

namespace scan695::elf {

// What this build says in place of an ELF file, or null for a build with libelf.
const char* WhyNot();

// Writes the program into the open file, which is empty and can be read and written. Gives false
// with the reason in `error` for a program that does not fit into an ELF file and for a file that
// cannot be written; what the file holds then is of no use.
bool Write(const inspector::Fst& fst, int descriptor, std::string& error);

}  // namespace scan695::elf
