// The records of the TypeTable: appending, finding one by its type index, and its size.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// Gives the record its number, appends it, and notes its forward references. Its list must stand in
// the image already. The result is the number.
uint32_t AppendType(TYPEINFO& record, uint32_t here_type_index);

// The record at position `type_index` less 100, which need not be the record of that number; a
// cleared record where none stands.
TYPEINFO RecordAtPositionOf(uint32_t type_index);

// Size in bytes of a type. Bitfields and unknown tags have 0; an index that no record has, a marker
// say, has 1, and so has a chain of attributes that comes back to itself.
uint32_t TypeSize(uint32_t type_index);

}  // namespace scan695
