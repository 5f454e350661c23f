// The one translation of type numbers that every reader uses.
#pragma once

#include <cstdint>

namespace scan695 {

// The type index of a tk_ti: a basic type, a record's number, or a marker for a type that is not
// defined yet (which is counted as a reference). Below 256 the answer is a table's; an unknown
// number there gives uint and a warning on the console.
uint32_t CvtTkType(uint32_t tk_ti);

}  // namespace scan695
