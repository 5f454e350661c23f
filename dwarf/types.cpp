#include "dwarf/types.h"

#include <algorithm>

#include "dwarf/type_fields.h"
#include "inspector/lookup.h"

namespace scan695::dwarf {

namespace {

using inspector::Fst;

constexpr int MAX_ATTRIBUTES = 64;  // over one another
constexpr uint32_t SECOND_VOID = 32;

bool HasEntry(const TYPEINFO& type) {
    switch (type.type_tag) {
        case TAG_POINTER:
        case TAG_ARRAY:
        case TAG_STRUCT:
        case TAG_UNION:
        case TAG_FUNCTION:
        case TAG_ENUMERATION:
            return true;
        case TAG_NONE:
        case TAG_ATTRIBUTE:
        case TAG_BITFIELD:
            break;
    }
    return false;
}

// The memory that an attribute tells in its high digit.
std::optional<uint8_t> MemoryOfAttribute(uint8_t spec) {
    switch (spec >> 4) {
        case 1:
            return MEM_DATA;
        case 2:
            return 3;
        case 3:
            return 1;
        case 4:
            return MEM_BIT_LOW;
        case 5:
            return MEM_BIT_HIGH;
        case 6:
            return MEM_CODE;
        default:
            return {};
    }
}

}  // namespace

Types::Types(const Fst& fst)
    : fst_(fst),
      loops_(fst),
      records_(static_cast<uint32_t>(inspector::UsableEntries(fst, inspector::TYPES))) {}

TypeId Types::Of(uint32_t type_index) {
    const uint32_t asked_for = type_index;
    for (int depth = 0; depth < MAX_ATTRIBUTES; ++depth) {
        if (type_index == TYPE_VOID || type_index == SECOND_VOID) return NO_TYPE;
        if (type_index < FIRST_TYPE_INDEX) return OfExtra(BASIC, type_index);
        const auto found = inspector::FindType(fst_, type_index);
        if (!found) return OfExtra(DECLARATION, type_index);
        if (HasEntry(found->type)) return found->record;
        if (found->type.type_tag == TAG_BITFIELD) return OfExtra(BITFIELD, found->record);
        if (found->type.type_tag != TAG_ATTRIBUTE || loops_.IsCut({found->record, 0})) break;
        type_index = found->type.u.pointer.type_index;
    }
    return OfExtra(DECLARATION, asked_for);
}

TypeId Types::At(const TypeEdge& edge, uint32_t type_index) {
    return loops_.IsCut(edge) ? OfExtra(DECLARATION, type_index) : Of(type_index);
}

TypeId Types::OfBit(uint32_t bit) {
    return OfExtra(BIT, bit);
}

TypeId Types::OfExtra(ExtraKind kind, uint32_t number) {
    const auto next = static_cast<TypeId>(records_ + extras_.size());
    const auto [entry, is_new] = extra_ids_.try_emplace(uint64_t{kind} << 32 | number, next);
    if (is_new) extras_.push_back({kind, number});
    return entry->second;
}

std::optional<uint8_t> Types::MemoryOf(uint32_t type_index) const {
    std::optional<uint8_t> memory;
    for (int depth = 0; depth < MAX_ATTRIBUTES; ++depth) {
        const auto found = inspector::FindType(fst_, type_index);
        if (!found || found->type.type_tag != TAG_ATTRIBUTE) break;
        // An inner attribute overrides the ones around it.
        if (const auto told = MemoryOfAttribute(found->type.u.pointer.spec)) memory = told;
        type_index = found->type.u.pointer.type_index;
    }
    return memory;
}

uint32_t Types::BasicSize(uint32_t type_index) const {
    return type_index < FIRST_TYPE_INDEX ? inspector::SizeOfType(fst_, type_index).value_or(0) : 0;
}

}  // namespace scan695::dwarf
