#include "ask/type_keys.h"

#include <cstring>

namespace scan695::ask {

using inspector::ReadEntry;

namespace {

// Each round looks one type further, so types that lead back to themselves need no care. What is
// deeper within types without a tag does not count.
constexpr int ROUNDS = 12;

}  // namespace

KeyMaker& KeyMaker::Add(std::string_view text) {
    Add(text.size());
    while (text.size() >= sizeof(uint64_t)) {
        uint64_t word;
        std::memcpy(&word, text.data(), sizeof word);
        Add(word);
        text.remove_prefix(sizeof word);
    }
    uint64_t rest = 0;
    std::memcpy(&rest, text.data(), text.size());
    return Add(rest);
}

TypeKeys::TypeKeys(const inspector::Fst& fst) : fst_(fst), lists_(TypeLists(fst)) {
    const size_t count = UsableEntries(fst, inspector::TYPES);
    keys_.resize(count);
    ComputeLists();
    for (int round = 0; round < ROUNDS; ++round) {
        std::vector<uint64_t> next(count);
        for (size_t i = 0; i < count; ++i)
            next[i] = Compute(*ReadEntry<TYPEINFO>(fst, inspector::TYPES, i));
        if (next == keys_) break;
        keys_ = std::move(next);
        ComputeLists();
    }
}

void TypeKeys::ComputeLists() {
    list_keys_.clear();
    for (const inspector::ListPlace& list : lists_.places()) {
        KeyMaker key;
        for (uint32_t i = 0; i < list.count; ++i) {
            FIELDINFO field;
            if (!inspector::ReadAt(fst_, list.offset + uint64_t{i} * sizeof field, field)) break;
            key.Add(field.value);
            key.Add(inspector::NameAt(fst_, field.name_offs).value_or(""));
            key.Add(Of(field.type_index));
        }
        list_keys_.push_back(key.key());
    }
}

uint64_t TypeKeys::KeyOfList(const TYPEINFO& type) const {
    const auto list = lists_.Find(inspector::ListOf(type));
    return list ? list_keys_[*list] : 0;
}

uint64_t TypeKeys::Of(uint32_t type_index) const {
    if (IsTypeMarker(type_index)) return TYPE_MARKER_BIT;  // the number is the input's
    if (type_index < FIRST_TYPE_INDEX) return type_index;
    const auto found = inspector::FindType(fst_, type_index);
    return found ? keys_[found->record] : TYPE_MARKER_BIT + 1;
}

uint64_t TypeKeys::Compute(const TYPEINFO& type) const {
    const auto& u = type.u;
    KeyMaker key;
    key.Add(type.type_tag);
    switch (type.type_tag) {
        case TAG_POINTER:
        case TAG_ATTRIBUTE:
            key.Add(u.pointer.spec).Add(u.pointer.ptr_size).Add(Of(u.pointer.type_index));
            break;
        case TAG_ARRAY:
            key.Add(u.array.nof_elem).Add(Of(u.array.type_index));
            break;
        case TAG_BITFIELD:
            key.Add(static_cast<uint8_t>(u.bits.displacement));
            key.Add(static_cast<uint8_t>(u.bits.nof_bits)).Add(u.bits.type_index);
            break;
        case TAG_FUNCTION:
            key.Add(u.function.spec).Add(u.function.nof_params).Add(Of(u.function.type_index));
            key.Add(KeyOfList(type));
            break;
        case TAG_STRUCT:
        case TAG_UNION:
        case TAG_ENUMERATION: {
            const uint32_t name_offs = type.type_tag == TAG_ENUMERATION ? u.enumeration.name_offs
                                                                        : u.structunion.name_offs;
            const auto name = inspector::NameAt(fst_, name_offs);
            if (!name || name->empty()) return OfLayout(type);
            key.Add(*name);
            break;
        }
        case TAG_NONE:
            break;
    }
    return key.key();
}

uint64_t TypeKeys::OfLayout(const TYPEINFO& type) const {
    const bool is_items = type.type_tag == TAG_ENUMERATION;
    const auto& u = type.u;
    const uint32_t name = is_items ? u.enumeration.name_offs : u.structunion.name_offs;
    KeyMaker key;
    key.Add(type.type_tag);
    key.Add(inspector::NameAt(fst_, name).value_or(""));
    key.Add(is_items ? u.enumeration.type_index : u.structunion.size);
    key.Add(KeyOfList(type));
    return key.key();
}

}  // namespace scan695::ask
