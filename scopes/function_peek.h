// A look ahead at the block behind an assembler symbol.
#pragma once

#include <cstdint>

namespace scan695 {

// True, with its start address, if a function block of that name begins at the cursor, which stays
// where it is. Bytes of any other kind are no fault.
bool PeekFunctionAddress(const char* name, uint32_t& address);

}  // namespace scan695
