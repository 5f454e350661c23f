// The address of a public symbol by name, for assembler symbols, which have none of their own. The
// external part is the place to look, and is read once: what a search has passed is remembered, and
// the next one goes on behind it. A fault in the part stops the run at the first search that comes
// to it. The records stand in input/external_group.h.
#pragma once

#include <cstdint>

namespace scan695 {

// True, with its address, if the external part gives the name an address in front of the first
// record that does not belong to the part. The cursor stays.
bool FindExternalValue(const char* name, uint32_t& address);

}  // namespace scan695
