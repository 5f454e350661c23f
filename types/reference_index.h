// Where forward references stand: for each marker the places of the type records that hold it, in
// the order in which a walk over the whole TypeTable would meet them. The essay in update_types.h
// tells what for.
//
// A place is only noted, never corrected: whoever visits it looks what stands there. A place may be
// noted twice. Records that share a list (typedef copies) share the places of its elements; these
// are noted for the first of them, and NextSharer leads on to the others.
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

// What stands in a place when it is noted.
struct Reference {
    uint32_t type_index;
    Place place;
};

class ReferenceIndex {
  public:
    // Notes the markers of a record that has just been appended at `position`.
    void NoteRecord(const TYPEINFO& record, uint32_t position);
    // Notes one place; no effect for a type index that is no marker.
    void NotePlace(uint32_t type_index, Place place);
    // Takes in what the image has got behind lists that claim more elements than they have.
    void NoteGrowth();
    // The places that show a marker in the 16 bytes at `offset` of the image, which have been
    // written over. Whoever writes into lists or may write into what follows them notes them.
    [[nodiscard]] std::vector<Reference> PlacesOver(uint32_t offset) const;

    // Only the places of active markers are given out. A new block of types deactivates all.
    void Activate(uint32_t marker);
    void ActivatePending(const std::vector<uint32_t>& pending);
    void DeactivateAll();
    // The first active place in walk order, or null; valid until the next call.
    const Place* First();
    // Takes the place that First has given out of the index.
    void RemoveFirst();

    // The next record with the same list.
    [[nodiscard]] std::optional<uint32_t> NextSharer(uint32_t record) const;

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
    // A list of the image with the records that have it.
    struct KnownList {
        ReferenceList list;
        uint32_t first_record;
        uint32_t last_record;
        uint32_t nof_noted = 0;  // elements looked at, all that the image has
    };

    uint32_t NumberOf(uint32_t marker);
    void PushHead(uint32_t number);
    void NoteList(const ReferenceList& list, uint32_t position);
    bool NoteElements(KnownList& known);
    const KnownList* ListAt(uint32_t offset) const;
    void AddPlacesOver(uint32_t offset, uint32_t word, std::vector<Reference>& found) const;

    HashTable<> number_of_marker_;
    std::vector<MarkerPlaces> markers_;
    std::vector<uint32_t> active_;  // numbers of the active markers
    size_t nof_pending_active_ = 0;
    std::vector<Head> heads_;  // a heap of the first places of the active markers, old ones too

    std::vector<KnownList> lists_;    // in the order of their offsets, which is that of the records
    std::vector<uint32_t> overlong_;  // numbers of the lists that claim more than they have,
    std::vector<uint32_t> incomplete_;  // and of those among them that the image does not reach yet
    HashTable<> next_sharer_;           // position to the next record with the same list
};

}  // namespace scan695
