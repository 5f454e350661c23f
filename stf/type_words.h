// Lines of the STF file that need the image or know type numbers: stored names, type references,
// and the Member records of stored lists.
#pragma once

#include <cstdint>
#include <string_view>

namespace scan695 {

// Adds a pair to the TypeAliasTable, in the order of the numbers; of several for one number the
// first counts. 0, and the pair is lost, when there is no memory.
int AddTypeAlias(uint32_t number, uint32_t target);
// Empties the TypeAliasTable and frees its memory.
void FreeTypeAliases();

// Quoted field line whose text is read from the image at `name_offs`; empty text for 0. An offset
// outside the image ends the run.
void outName(std::string_view key, uint32_t name_offs);

// Type reference: the word of a basic type, "int" for a marker, or @Type.N with at most one step
// through the TypeAliasTable.
void outType(std::string_view key, uint32_t type_index);

// Member records for the `count` elements of the list at `field_offs`; nothing for a count of 0 or
// less or an offset of 0. An offset outside the image ends the run.
void outField(int32_t count, uint32_t field_offs);

}  // namespace scan695
