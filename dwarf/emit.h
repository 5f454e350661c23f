// The debug sections of a program, in DWARF 4.
#pragma once

#include <vector>

#include "dwarf/bytes.h"
#include "dwarf/program.h"

namespace scan695::dwarf {

struct Section {
    const char* name;
    bool is_text;  // NUL-terminated texts
    Bytes bytes;
};

// In the order in which they stand in the file. Sections that would be empty are left out.
std::vector<Section> Emit(const Program& program);

}  // namespace scan695::dwarf
