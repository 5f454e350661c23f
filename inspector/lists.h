// The lists in the stored area: members, enumeration items and parameters of types, locations of
// symbols. The converter stores them side by side, and types that are copies of one another share
// theirs. In a damaged file lists may lie over one another, as many as it has records; of those
// only one counts here, so that going through all lists never costs more than the length of the
// file.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <vector>

#include "inspector/reader.h"

namespace scan695::inspector {

struct ListPlace {
    uint32_t offset = 0;
    uint32_t count = 0;  // elements that are stored; 0 for no list
    auto operator<=>(const ListPlace&) const = default;
};
ListPlace ListOf(const TYPEINFO& type);
ListPlace ListOf(const SYMINFO& symbol);

class ListSet {
  public:
    explicit ListSet(std::vector<ListPlace> places);

    const std::vector<ListPlace>& places() const { return places_; }
    // The number of a place among them; nothing for an empty one and one that lies over another.
    std::optional<size_t> Find(ListPlace place) const;

  private:
    std::vector<ListPlace> places_;  // by offset
};

ListSet TypeLists(const Fst& fst);
ListSet LocationLists(const Fst& fst);

}  // namespace scan695::inspector
