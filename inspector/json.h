// The summary and the tables as one JSON document.
#pragma once

#include <iosfwd>
#include <vector>

#include "inspector/reader.h"
#include "inspector/tables.h"

namespace scan695::inspector {

// Members: "header", "sections", and one array for each table. Numbers that a listing shows in
// hexadecimal are plain numbers here; what it shows as "-" is null.
void PrintJson(const Fst& fst, const std::vector<const Table*>& tables, std::ostream& out);

}  // namespace scan695::inspector
