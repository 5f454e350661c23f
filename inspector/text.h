// The summary and the listings as text.
#pragma once

#include <iosfwd>

#include "inspector/reader.h"
#include "inspector/tables.h"

namespace scan695::inspector {

void PrintSummary(const Fst& fst, std::ostream& out);
void PrintTable(const Fst& fst, const Table& table, std::ostream& out);

}  // namespace scan695::inspector
