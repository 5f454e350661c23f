// The shape that the AD extension and environment parts share:
//
//     F0 index name                   NN
//     F1 CE index type code fields    ATN, one or more; the code tells the fields
#pragma once

#include <cstdint>

namespace scan695 {

// Reads the NN record and the ATN records up to the first other code, which ends the part; at least
// one must come. The head of an ATN is an index (which must be that of the NN when `same_index` is
// set), a type, and the attribute code, with which `read_attribute` is called to read the fields.
// `text` is the one buffer for the texts of the part, PART_NAME_SIZE bytes; a text that does not
// come leaves it as it was.
void ReadAttributePart(uint32_t offset, bool same_index,
                       void (*read_attribute)(uint32_t code, char* text));

}  // namespace scan695
