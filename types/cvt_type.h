// The one translation of type numbers that every reader uses.
#pragma once

#include <cstdint>

namespace scan695 {

// From here on a tk_ti is a type that the input defines itself.
inline constexpr uint32_t FIRST_USER_TYPE = 256;

// The type index of a tk_ti: a basic type, a record's number, or a marker for a type that is not
// defined yet (which is counted as a reference). Below FIRST_USER_TYPE the answer is a table's; an
// unknown number there gives uint and a warning on the console.
uint32_t CvtTkType(uint32_t tk_ti);

}  // namespace scan695
