// The lists of type records: members, items, parameters.
#pragma once

#include <vector>

#include "inspector/reader.h"

namespace scan695::dwarf {

inline bool IsComposite(const TYPEINFO& type) {
    return type.type_tag == TAG_STRUCT || type.type_tag == TAG_UNION;
}

// As many elements as the file has, none for a type without a list.
inline std::vector<FIELDINFO> FieldsOf(const inspector::Fst& fst, const TYPEINFO& type) {
    uint32_t offset = 0;
    uint32_t count = 0;
    if (IsComposite(type)) {
        offset = type.u.structunion.field_offs;
        count = inspector::StoredElements(type.u.structunion.nof_elem);
    } else if (type.type_tag == TAG_ENUMERATION) {
        offset = type.u.enumeration.field_offs;
        count = inspector::StoredElements(type.u.enumeration.nof_elem);
    } else if (type.type_tag == TAG_FUNCTION) {
        offset = type.u.function.params_offset;
        count = type.u.function.nof_params;
    }
    std::vector<FIELDINFO> fields;
    for (uint32_t i = 0; offset != 0 && i < count; ++i) {
        FIELDINFO field;
        if (!inspector::ReadAt(fst, offset + uint64_t{i} * sizeof field, field)) break;
        fields.push_back(field);
    }
    return fields;
}

}  // namespace scan695::dwarf
