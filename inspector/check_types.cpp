#include "inspector/checks.h"

namespace scan695::inspector {

namespace {

struct TypeCheck {
    const Fst& fst;
    uint64_t number;
    const TYPEINFO& type;
    CheckedLists& lists;
    Findings& findings;

    void Require(bool is_good, const char* what) const {
        if (!is_good) findings.Add("type %llu: %s", Wide(number), what);
    }
    void Name(uint32_t offset) const { CheckName(fst, offset, "type", number, findings); }
};

enum class FieldKind : uint8_t { MEMBER, ITEM, PARAMETER };

void CheckFields(const TypeCheck& check, ListPlace list, FieldKind kind) {
    if (!CheckList(check.fst, list, static_cast<uint8_t>(kind), "type", check.number, check.lists,
                   check.findings))
        return;
    for (uint32_t i = 0; i < list.count; ++i) {
        FIELDINFO field;
        if (!ReadAt(check.fst, list.offset + uint64_t{i} * sizeof field, field)) return;
        check.Require(field.reserved == 0, "reserved word of a list element is not zero");
        if (kind == FieldKind::PARAMETER) {
            check.Require(field.name_offs == 0 && field.value == 0,
                          "parameter with a name or a value");
        } else {
            check.Name(field.name_offs);
        }
        if (kind == FieldKind::ITEM) {
            check.Require(field.type_index == 0, "enumeration item with a type");
        }
    }
}

// A list whose length has no low 16 bits is not stored.
void CheckOptionalFields(const TypeCheck& check, uint32_t offset, uint32_t count, FieldKind kind) {
    const ListPlace list = {offset, StoredElements(count)};
    if (list.count == 0) {
        check.Require(offset == 0, "list without elements");
    } else {
        CheckFields(check, list, kind);
    }
}

void CheckFunction(const TypeCheck& check) {
    const auto& function = check.type.u.function;
    check.Require((function.spec & ~0x0A) == 0, "unknown bits in the flags of a function");
    check.Require(function.return_offset == 0 && function.reserved_14[0] == 0 &&
                      function.reserved_14[1] == 0 && function.reserved_22[0] == 0 &&
                      function.reserved_22[1] == 0,
                  "reserved bytes are not zero");
    // The count is cut to 8 bits, so a list may be longer than it says.
    if (function.nof_params != 0 || function.params_offset != 0) {
        CheckFields(check, {function.params_offset, StoredElements(function.nof_params)},
                    FieldKind::PARAMETER);
    }
}

void CheckStructUnion(const TypeCheck& check) {
    const auto& structunion = check.type.u.structunion;
    check.Require(structunion.reserved_22 == 0, "reserved bytes are not zero");
    check.Name(structunion.name_offs);
    CheckOptionalFields(check, structunion.field_offs, structunion.nof_elem, FieldKind::MEMBER);
}

void CheckEnumeration(const TypeCheck& check) {
    const auto& enumeration = check.type.u.enumeration;
    const uint32_t basic = enumeration.type_index;
    check.Require(
        basic == TYPE_CHAR || basic == TYPE_SHORT || basic == TYPE_INT || basic == TYPE_LONG,
        "enumeration in no signed basic type");
    check.Name(enumeration.name_offs);
    CheckOptionalFields(check, enumeration.field_offs, enumeration.nof_elem, FieldKind::ITEM);
}

void CheckBitfield(const TypeCheck& check) {
    const auto& bits = check.type.u.bits;
    check.Require(bits.reserved_10[0] == 0 && bits.reserved_10[1] == 0 &&
                      bits.reserved_16[0] == 0 && bits.reserved_16[1] == 0,
                  "reserved bytes are not zero");
    check.Require(bits.type_index <= TYPE_LONG, "bitfield in no integer basic type");
}

void CheckPointer(const TypeCheck& check) {
    const auto& pointer = check.type.u.pointer;
    check.Require(pointer.base == 0 && pointer.reserved_16[0] == 0 && pointer.reserved_16[1] == 0,
                  "reserved bytes are not zero");
    if (check.type.type_tag == TAG_ATTRIBUTE) {
        check.Require(pointer.ptr_size == 0, "attribute with a pointer size");
        return;
    }
    check.Require(pointer.spec == 1 || pointer.spec == 3, "pointer neither small nor large");
    check.Require(pointer.ptr_size >= 2 && pointer.ptr_size <= 4, "pointer size not 2 to 4");
}

void CheckType(const TypeCheck& check) {
    const TYPEINFO& type = check.type;
    check.Require(type.here_type_index >= FIRST_TYPE_INDEX, "type index of a basic type");
    check.Require(type.reserved[0] == 0 && type.reserved[1] == 0 && type.reserved[2] == 0,
                  "reserved bytes are not zero");
    switch (type.type_tag) {
        case TAG_FUNCTION:
            return CheckFunction(check);
        case TAG_ARRAY:
            return check.Require(type.u.array.reserved_20 == 0, "reserved bytes are not zero");
        case TAG_STRUCT:
        case TAG_UNION:
            return CheckStructUnion(check);
        case TAG_ENUMERATION:
            return CheckEnumeration(check);
        case TAG_BITFIELD:
            return CheckBitfield(check);
        case TAG_POINTER:
        case TAG_ATTRIBUTE:
            return CheckPointer(check);
        case TAG_NONE: {
            const TYPEINFO cleared = {};
            return check.Require(std::memcmp(&type.u, &cleared.u, sizeof type.u) == 0,
                                 "no tag, but contents");
        }
    }
    check.Require(false, "unknown tag");
}

}  // namespace

void CheckTypes(const Fst& fst, Findings& findings) {
    CheckedLists lists = {TypeLists(fst)};
    for (uint64_t i = 0; i < UsableEntries(fst, TYPES); ++i) {
        const auto type = *ReadEntry<TYPEINFO>(fst, TYPES, i);
        CheckType({fst, i, type, lists, findings});
    }
}

}  // namespace scan695::inspector
