// The Type and Member records of the STF file.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// Writes record number `number` of the TypeTable, with the Member records of its list in front of
// it. Nothing for an unknown tag. An attribute lets later references to it name its target.
void outTypeRecord(uint32_t number, const TYPEINFO& record);

}  // namespace scan695
