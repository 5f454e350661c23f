// The member list of a struct or union: names, each with a type and an offset, closed by a zero
// byte or by a byte of 80 or more, which stays for the next reader. The offset counts bytes; of a
// bitfield, bits.
#pragma once

#include <cstdint>

namespace scan695 {

struct MemberList {
    uint32_t count = 0;
    uint32_t field_offs = 0;  // of the stored list; 0 without members
    bool is_struct = true;    // false when the members lie over one another
};
// Types.BfParentSize must hold the size of the struct or union.
MemberList ScanMembers();

}  // namespace scan695
