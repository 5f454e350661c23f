#include "inspector/lists.h"

#include <algorithm>

namespace scan695::inspector {

namespace {

ListPlace PlaceOf(uint32_t offset, uint32_t count) {
    return {offset, offset == 0 ? 0 : StoredElements(count)};
}

template <class Record>
ListSet ListsOf(const Fst& fst, SectionId table) {
    std::vector<ListPlace> places;
    for (uint64_t i = 0; i < UsableEntries(fst, table); ++i) {
        const ListPlace place = ListOf(*ReadEntry<Record>(fst, table, i));
        if (place.count != 0) places.push_back(place);
    }
    return ListSet(std::move(places));
}

}  // namespace

ListPlace ListOf(const TYPEINFO& type) {
    const auto& u = type.u;
    switch (type.type_tag) {
        case TAG_STRUCT:
        case TAG_UNION:
            return PlaceOf(u.structunion.field_offs, u.structunion.nof_elem);
        case TAG_ENUMERATION:
            return PlaceOf(u.enumeration.field_offs, u.enumeration.nof_elem);
        case TAG_FUNCTION:
            return PlaceOf(u.function.params_offset, u.function.nof_params);
        default:
            return {};
    }
}

ListPlace ListOf(const SYMINFO& symbol) {
    return PlaceOf(symbol.locinfo_offs, symbol.nof_locs);
}

ListSet::ListSet(std::vector<ListPlace> places) {
    std::ranges::sort(places);
    uint64_t end = 0;
    for (const ListPlace& place : places) {
        if (place.offset < end) continue;
        places_.push_back(place);
        end = place.offset + uint64_t{place.count} * LIST_ELEMENT_BYTES;
    }
}

std::optional<size_t> ListSet::Find(ListPlace place) const {
    const auto found = std::ranges::lower_bound(places_, place);
    if (found == places_.end() || *found != place) return {};
    return static_cast<size_t>(found - places_.begin());
}

ListSet TypeLists(const Fst& fst) {
    return ListsOf<TYPEINFO>(fst, TYPES);
}

ListSet LocationLists(const Fst& fst) {
    return ListsOf<SYMINFO>(fst, SYMBOLS);
}

}  // namespace scan695::inspector
