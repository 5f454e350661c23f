// The tables of an FST file by name.
#pragma once

#include <string>

#include "inspector/table.h"

namespace scan695::inspector {

inline constexpr const char* TABLE_NAMES[] = {"modules", "symbols", "types", "blocks",
                                              "lines",   "ranges",  "code"};

// Null for a name that no table has.
const Table* FindTable(const std::string& name);

}  // namespace scan695::inspector
