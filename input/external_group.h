// The records of the external part, which lists the public symbols of the program. It is read
// twice: by its own reader, and by the search for the address of an assembler symbol.
//
//     E5 segment                                 SB: sets the segment, for the trace only
//     E8 index name                              NI: opens the group of one symbol; index from 32
//     up F1 C9 index type attribute [memory id]     ATI E2 C9 index address ASI, may be missing
#pragma once

#include <cstdint>
#include <optional>

#include "store/records.h"

namespace scan695 {

struct ExternalGroup {
    uint32_t index;
    uint32_t name_at;  // offset of the name field in the input
    uint32_t tk_ti;
    uint32_t attribute;
    uint32_t memory_id;  // the index where it is absent: both are read into one place
    bool has_address;    // the ASI code has come; ReadExternalAddress reads the rest of it
};

// Reads the fields of an SB record, with its trace line, and gives the segment.
uint32_t ReadExternalSegment();

// Reads a group behind its E8, up to and including the code of the ASI record or the two bytes that
// stand in its place. `name` holds SYMBOL_NAME_SIZE bytes; one that does not come leaves it as it
// was. With `known_attribute` an attribute that no public symbol has ends the run.
ExternalGroup ReadExternalGroup(char* name, bool known_attribute);

// Reads the index and the address behind the code of the ASI record.
uint32_t ReadExternalAddress(const ExternalGroup& group);

// Nothing for an attribute that no public symbol has.
std::optional<StorageClass> PublicStorageClass(uint32_t attribute);

}  // namespace scan695
