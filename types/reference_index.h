// Where forward references stand: for each marker the places of the type records that hold it, in
// the order in which a walk over the whole TypeTable would meet them. UpdateTypes visits these
// places in place of walking.
//
// A place is only noted, never corrected: whoever visits it looks what stands there. Records that
// share a list (typedef copies) share the places of its elements too; they are noted for the first
// of them, and NextSharer leads on to the others.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/hash_table.h"
#include "store/records.h"
#include "types/type_fields.h"

namespace scan695 {

struct Place {
    uint32_t record;   // position in the TypeTable
    uint32_t element;  // 0 for the record's own field, else the number of the list element plus 1
    auto operator<=>(const Place&) const = default;
};

// A struct or union that claims more elements than its stored list has: what lies behind the list
// counts as elements too, so its list is always walked whole.
struct OverlongList {
    uint32_t record;
    bool shared;  // with a record in front of it
};

class ReferenceIndex {
  public:
    // Notes the markers of a record that has just been appended at `position`.
    void NoteRecord(const TYPEINFO& record, uint32_t position);
    // Notes one place; no effect for a type index that is no marker.
    void NotePlace(uint32_t type_index, Place place);
    // Tells, before its record is noted, that the list at that offset is shorter than claimed.
    void NoteOverlongList(uint32_t list_offset) { overlong_offsets_.Put(list_offset, 1); }

    // Only the places of active markers are given out. A new block of types deactivates all.
    void Activate(uint32_t marker);
    void DeactivateAll();
    // The first active place in walk order, or null; valid until the next call.
    const Place* First();
    // Takes the place that First has given out of the index.
    void RemoveFirst();

    // The next record with the same list.
    std::optional<uint32_t> NextSharer(uint32_t record) const;

    std::vector<OverlongList> Overlong;  // in the order of their positions

  private:
    struct MarkerPlaces {
        bool active = false;
        std::vector<Place> places = {};  // a heap, the first place in walk order on top
    };
    struct Head {
        Place place;
        uint32_t number;  // of the MarkerPlaces
        auto operator<=>(const Head&) const = default;
    };

    uint32_t NumberOf(uint32_t marker);
    void PushHead(uint32_t number);
    void NoteList(const ReferenceList& list, uint32_t position);
    bool NoteElements(const ReferenceList& list, uint32_t position);

    HashTable<> number_of_marker_;
    std::vector<MarkerPlaces> markers_;
    std::vector<uint32_t> active_;  // numbers of the active markers
    std::vector<Head> heads_;  // a heap of the first places of the active markers, old ones too

    HashTable<> last_sharer_;  // list offset to the newest record with that list
    HashTable<> next_sharer_;  // position to the next record with the same list
    HashTable<> overlong_offsets_;
};

}  // namespace scan695
