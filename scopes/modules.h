// The way of a module into its table, and the search for one by name.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// Stores a module and its name, writes the Module record of the STF file and gives the module's
// index. The record comes with `language` filled and all else 0; the name is cut to 31 characters
// in the caller's buffer. No memory ends the run.
int32_t AddModule(MODULEINFO& record, char* name);

// True when any module up to CurrentModule has exactly this name.
bool ModuleExists(const char* name);

}  // namespace scan695
