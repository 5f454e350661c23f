// The references that a type record holds: at most one of its own, and at most one list of elements
// in the image, each with one.
#pragma once

#include <cstddef>
#include <cstdint>

#include "store/records.h"

namespace scan695 {

// The field of the record that holds a type index and may hold a marker, or null.
const uint32_t* OwnReference(const TYPEINFO& record);
inline uint32_t* OwnReference(TYPEINFO& record) {
    return const_cast<uint32_t*>(OwnReference(static_cast<const TYPEINFO&>(record)));
}

// Where the type index stands in an element of a list.
inline constexpr uint32_t TYPE_INDEX_AT = offsetof(FIELDINFO, type_index);

struct ReferenceList {
    uint32_t offset = 0;   // in the image
    uint32_t count = 0;    // elements that the record claims; 0 when there is no list
    bool members = false;  // members of a struct or union, not parameters

    uint32_t ElementOffset(uint32_t number) const {
        return offset + number * static_cast<uint32_t>(sizeof(FIELDINFO));
    }
};
ReferenceList ListOf(const TYPEINFO& record);

}  // namespace scan695
