#include "types/type_table.h"

#include "store/tables.h"
#include "store/type_records.h"
#include "types/type_state.h"

namespace scan695 {

namespace {

constexpr uint32_t UNKNOWN_SIZE = 1;
constexpr uint32_t UNKNOWN_BASIC_TYPE = 13;  // a number that stands for no type: its size is 1
constexpr uint32_t SHORT_CHAIN = 16;

bool FindRecord(uint32_t type_index, TYPEINFO& record) {
    const uint32_t position = type_index - FIRST_TYPE_INDEX;
    if (position < Store.Header.nof_types && ReadRecord(Store.TypeTable, position, record) != 0 &&
        record.here_type_index == type_index)
        return true;
    const auto displaced = Types.DisplacedPositions.Find(type_index);
    return displaced && ReadRecord(Store.TypeTable, *displaced, record) != 0;
}

uint32_t BasicSize(uint32_t type_index) {
    return type_index > TYPE_BIT ? UNKNOWN_SIZE : GetBasicTypeSize(type_index);
}

uint32_t RecordSize(const TYPEINFO& record) {
    switch (record.type_tag) {
        case TAG_POINTER:
            return record.u.pointer.ptr_size;
        case TAG_ARRAY:
            return record.u.array.size;
        case TAG_STRUCT:
        case TAG_UNION:
            return record.u.structunion.size;
        case TAG_FUNCTION:
            return Store.PointerSize;
        case TAG_ENUMERATION:
            return GetBasicTypeSize(record.u.enumeration.type_index);
        case TAG_BITFIELD:
        case TAG_ATTRIBUTE:  // has what is behind it
        case TAG_NONE:
            break;
    }
    return 0;
}

// What stands behind an attribute: a type on its chain, as far as is known. A target that is no
// marker never changes, so what has been reached once is always reached.
uint32_t BehindAttribute(const TYPEINFO& attribute) {
    const auto end = Types.ChainEnds.Find(attribute.here_type_index);
    return end.value_or(attribute.u.pointer.type_index);
}

// Lets all attributes from `first` on lead straight to `end`.
void ShortenChain(uint32_t first, uint32_t end) {
    TYPEINFO record;
    while (first != end && FindRecord(first, record) && record.type_tag == TAG_ATTRIBUTE) {
        const uint32_t next = BehindAttribute(record);
        Types.ChainEnds.Put(first, end);
        if (next == end) return;
        first = next;
    }
}

}  // namespace

uint32_t AppendType(TYPEINFO& record, uint32_t here_type_index) {
    const uint32_t position = Store.Header.nof_types;
    record.here_type_index = here_type_index;
    AddType(record);
    if (here_type_index - FIRST_TYPE_INDEX != position)
        Types.DisplacedPositions.Put(here_type_index, position);
    Types.References.NoteRecord(record, position);
    return here_type_index;
}

TYPEINFO RecordAtPositionOf(uint32_t type_index) {
    TYPEINFO record = {};
    ReadRecord(Store.TypeTable, type_index - FIRST_TYPE_INDEX, record);
    return record;
}

uint32_t TypeSize(uint32_t type_index) {
    const uint32_t first = type_index;
    uint32_t reached = type_index;  // the last type that is certain to stay on the chain
    uint32_t size = UNKNOWN_SIZE;
    uint32_t steps = 0;
    TYPEINFO record;
    for (;; ++steps) {
        if (steps > Store.Header.nof_types) {  // the chain has come back to itself
            reached = UNKNOWN_BASIC_TYPE;
            break;
        }
        if (type_index < FIRST_TYPE_INDEX) {
            size = BasicSize(type_index);
            break;
        }
        if (!FindRecord(type_index, record)) break;
        if (record.type_tag != TAG_ATTRIBUTE) {
            size = RecordSize(record);
            break;
        }
        type_index = BehindAttribute(record);
        if (!IsTypeMarker(type_index)) reached = type_index;
    }
    if (steps > SHORT_CHAIN) ShortenChain(first, reached);
    return size;
}

}  // namespace scan695
