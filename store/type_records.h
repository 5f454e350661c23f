// The TypeTable's own append and its access to list elements in the image.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// Appends the record at the end of the TypeTable and counts it. A failure ends the run.
void AddType(const TYPEINFO& record);

// One element of a member, enumeration or parameter list, by its image offset. A read behind the
// end of the image gives zeros; a write there gives false.
void ReadField(uint32_t offset, FIELDINFO& field);
bool WriteField(uint32_t offset, const FIELDINFO& field);

}  // namespace scan695
