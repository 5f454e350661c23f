// The members of a struct or union under construction.
#pragma once

#include <cstdint>

#include "input/cursor.h"
#include "store/records.h"
#include "types/field_list.h"

namespace scan695 {

// A struct or union under construction. It stands on the heap, as little as possible in the frame
// of a function that calls itself through ScanType: definitions may nest 1,000 deep.
struct OpenStruct {
    uint32_t size = 0;
    FieldList members;
    FIELDINFO member = {};
    char name[SYMBOL_NAME_SIZE] = "";
    uint32_t offset = 0;
    bool group_start = true;  // the last member was no bitfield
    TYPEINFO record = {};     // of a bitfield, and at last of the struct itself
};

// Reads what stands behind the type of a member, its offset, and adds the member. The offset counts
// bytes; of a bitfield, bits. Types.BfParentSize must hold the size of the struct or union.
void ReadMember(OpenStruct& open, uint32_t type_index);

// Stores the list. Gives its offset, and whether the members are those of a struct: they do not lie
// over one another.
struct StoredMembers {
    uint32_t field_offs;
    bool is_struct;
};
StoredMembers StoreMembers(const OpenStruct& open);

}  // namespace scan695
