// The item list of an enumeration: an optional size mark, then names with their values, closed by a
// zero byte or by a byte of 80 or more, which stays for the next reader.
#pragma once

#include <cstdint>

namespace scan695 {

struct EnumItems {
    uint32_t count = 0;
    uint32_t field_offs = 0;  // of the stored list
    uint32_t size = 0;        // the size mark; 0 without one
};
EnumItems ScanEnumItems();

}  // namespace scan695
