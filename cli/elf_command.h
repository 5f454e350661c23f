// scan695 elf: a program as an ELF file with DWARF.
#pragma once

#include "cli/command.h"

namespace scan695::cli {

extern const Command ELF_COMMAND;

}  // namespace scan695::cli
