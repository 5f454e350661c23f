// Writer of the Symbol records, with the Range records in front of a symbol that has several
// locations. Here and only here it is decided whether a symbol is fit for the STF file; one that is
// not gets a comment line, and stays in the tables.
#pragma once

#include <span>

#include "store/records.h"

namespace scan695 {

// `name` is the text as it is stored. None of this can fail.
void outSymbol(const char* name, const SYMINFO& record, std::span<const LOCINFO> locs);

}  // namespace scan695
