#include "types/type_fields.h"

namespace scan695 {

const uint32_t* OwnReference(const TYPEINFO& record) {
    switch (record.type_tag) {
        case TAG_POINTER:
        case TAG_ATTRIBUTE:
            return &record.u.pointer.type_index;
        case TAG_ARRAY:
            return &record.u.array.type_index;
        case TAG_FUNCTION:
            return &record.u.function.type_index;
        case TAG_STRUCT:
        case TAG_UNION:
        case TAG_BITFIELD:
        case TAG_ENUMERATION:
        case TAG_NONE:
            break;
    }
    return nullptr;
}

ReferenceList ListOf(const TYPEINFO& record) {
    ReferenceList list;
    if (record.type_tag == TAG_STRUCT || record.type_tag == TAG_UNION)
        list = {record.u.structunion.field_offs, record.u.structunion.nof_elem, true};
    else if (record.type_tag == TAG_FUNCTION)
        list = {record.u.function.params_offset, record.u.function.nof_params, false};
    return list.offset != 0 ? list : ReferenceList();
}

}  // namespace scan695
