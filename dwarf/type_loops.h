// Types that lead back to themselves on a way that C has no words for: through pointers, arrays and
// functions alone, or by holding themselves. Readers of DWARF follow such ways without end, so they
// are cut.
#pragma once

#include <cstdint>
#include <unordered_set>

#include "inspector/reader.h"

namespace scan695::dwarf {

// A reference from a type record: 0 is its target, result or element, 1 and up its parameters or
// members.
struct TypeEdge {
    uint32_t record;
    uint32_t slot;

    uint64_t Key() const { return uint64_t{record} << 16 | slot; }
};

class TypeLoops {
  public:
    explicit TypeLoops(const inspector::Fst& fst);

    // True if this reference closes a loop.
    bool IsCut(const TypeEdge& edge) const { return cuts_.contains(edge.Key()); }

  private:
    std::unordered_set<uint64_t> cuts_;
};

}  // namespace scan695::dwarf
