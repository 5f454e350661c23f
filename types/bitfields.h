// The placement of bitfields. The input gives a bitfield member its bit offset from the start of
// the struct and a bitfield type its width; the output wants the storage unit: its basic type, its
// byte offset, and the position of the field inside it. The two processor families have a rule
// each.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

// No storage unit yet: the state at the head of a member list.
void ResetPlacement();

// Sets displacement and parent type of the record by the rule of the processor and gives the byte
// offset of the storage unit. `new_group` marks a field that opens a group of bitfields.
uint32_t PlaceBitfield(uint32_t bit_offset, bool new_group, TYPEINFO& record);

// C166 family: the basic type of the storage unit. Opens the next unit for a field that lies behind
// the current one.
uint32_t GetBitfieldParent(int32_t nof_bits, int32_t displacement);

// TriCore: the byte offset of the storage unit; sets the record's displacement and type.
uint32_t AlignBitfield(int32_t displacement, int32_t nof_bits, TYPEINFO& record);

// Places the members of a struct whose bitfield type came behind it. `fst_ti` is the struct's
// position plus 100. Members placed before are placed again.
void ResolveStructureBitfields(uint32_t fst_ti);

}  // namespace scan695
