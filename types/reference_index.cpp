#include "types/reference_index.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>

#include "store/tables.h"
#include "store/type_records.h"

namespace scan695 {

namespace {

// The standard heaps have their largest element on top; ours their smallest.
template <class Element>
void PushSmallest(std::vector<Element>& heap, const Element& element) {
    heap.push_back(element);
    std::push_heap(heap.begin(), heap.end(), std::greater<>());
}

template <class Element>
void PopSmallest(std::vector<Element>& heap) {
    std::pop_heap(heap.begin(), heap.end(), std::greater<>());
    heap.pop_back();
}

}  // namespace

void ReferenceIndex::NoteRecord(const TYPEINFO& record, uint32_t position) {
    if (const uint32_t* field = OwnReference(record)) NotePlace(*field, {position, 0});
    const ReferenceList list = ListOf(record);
    if (list.count != 0) NoteList(list, position);
}

// A list is stored in front of its first record, so one that lies behind all others is new.
void ReferenceIndex::NoteList(const ReferenceList& list, uint32_t position) {
    const KnownList* known = ListAt(list.offset);
    if (known != nullptr && known->list.offset == list.offset) {
        uint32_t& last = lists_[static_cast<size_t>(known - lists_.data())].last_record;
        next_sharer_.Put(last, position);
        last = position;
        return;
    }
    lists_.push_back({list, position, position});
    if (NoteElements(lists_.back())) return;
    const auto number = static_cast<uint32_t>(lists_.size() - 1);
    overlong_.push_back(number);
    incomplete_.push_back(number);
}

// The last list that begins at the offset or in front of it.
const ReferenceIndex::KnownList* ReferenceIndex::ListAt(uint32_t offset) const {
    const auto next = std::upper_bound(
        lists_.begin(), lists_.end(), offset,
        [](uint32_t value, const KnownList& known) { return value < known.list.offset; });
    return next == lists_.begin() ? nullptr : &*(next - 1);
}

// True when the image has all elements that the list claims.
bool ReferenceIndex::NoteElements(KnownList& known) {
    const auto image_size = static_cast<uint32_t>(Store.FstImage.Size());
    for (; known.nof_noted < known.list.count; ++known.nof_noted) {
        const uint32_t offset = known.list.ElementOffset(known.nof_noted);
        if (offset + TYPE_INDEX_AT + sizeof(uint32_t) > image_size) return false;
        FIELDINFO field;
        ReadField(offset, field);
        NotePlace(field.type_index, {known.first_record, known.nof_noted + 1});
    }
    return true;
}

std::vector<Reference> ReferenceIndex::PlacesOver(uint32_t offset) const {
    std::vector<Reference> found;
    if (lists_.empty()) return found;
    FIELDINFO item;
    ReadField(offset, item);
    uint32_t words[4];
    static_assert(sizeof words == sizeof item);
    std::memcpy(words, &item, sizeof words);
    for (const uint32_t word : words) {
        if (IsTypeMarker(word)) AddPlacesOver(offset, word, found);
        offset += sizeof word;
    }
    return found;
}

// Lists do not lie over one another but for what overlong ones claim, which is at most 65,535
// elements. An overlong list needs as much room in front of it for the names of its members that
// few of them reach any word.
void ReferenceIndex::AddPlacesOver(uint32_t offset, uint32_t word,
                                   std::vector<Reference>& found) const {
    const auto add = [&](const KnownList& known) {
        const uint32_t from_first = offset - known.list.ElementOffset(0) - TYPE_INDEX_AT;
        const uint32_t element = from_first / uint32_t{sizeof(FIELDINFO)};
        if (offset < known.list.offset + TYPE_INDEX_AT || element >= known.nof_noted) return;
        if (from_first % sizeof(FIELDINFO) != 0) return;
        found.push_back({word, {known.first_record, element + 1}});
    };
    const KnownList* owner = ListAt(offset);
    if (owner == nullptr) return;
    add(*owner);
    const auto number = static_cast<uint32_t>(owner - lists_.data());
    auto behind = std::lower_bound(overlong_.begin(), overlong_.end(), number);
    while (behind != overlong_.begin()) {
        const KnownList& known = lists_[*--behind];
        if (offset - known.list.offset > UINT16_MAX * uint32_t{sizeof(FIELDINFO)}) break;
        add(known);
    }
}

void ReferenceIndex::NoteGrowth() {
    std::erase_if(incomplete_, [this](uint32_t number) { return NoteElements(lists_[number]); });
}

void ReferenceIndex::NotePlace(uint32_t type_index, Place place) {
    if (!IsTypeMarker(type_index)) return;
    const uint32_t number = NumberOf(type_index);
    MarkerPlaces& marker = markers_[number];
    PushSmallest(marker.places, place);
    if (marker.active && marker.places.front() == place) PushHead(number);
}

uint32_t ReferenceIndex::NumberOf(uint32_t marker) {
    if (const auto number = number_of_marker_.Find(marker)) return *number;
    const auto number = static_cast<uint32_t>(markers_.size());
    number_of_marker_.Put(marker, number);
    markers_.emplace_back();
    return number;
}

void ReferenceIndex::PushHead(uint32_t number) {
    PushSmallest(heads_, {markers_[number].places.front(), number});
}

void ReferenceIndex::Activate(uint32_t marker) {
    const uint32_t number = NumberOf(marker);
    if (markers_[number].active) return;
    markers_[number].active = true;
    active_.push_back(number);
    if (!markers_[number].places.empty()) PushHead(number);
}

void ReferenceIndex::ActivatePending(const std::vector<uint32_t>& pending) {
    for (; nof_pending_active_ < pending.size(); ++nof_pending_active_)
        Activate(pending[nof_pending_active_] | TYPE_MARKER_BIT);
}

void ReferenceIndex::DeactivateAll() {
    for (const uint32_t number : active_) markers_[number].active = false;
    active_.clear();
    heads_.clear();
    nof_pending_active_ = 0;
}

// A head is old when its place has left the marker's heap or has got another in front of it; in the
// second case it comes again when its turn does.
const Place* ReferenceIndex::First() {
    while (!heads_.empty()) {
        const Head& head = heads_.front();
        const std::vector<Place>& places = markers_[head.number].places;
        if (!places.empty() && places.front() == head.place) return &head.place;
        PopSmallest(heads_);
    }
    return nullptr;
}

void ReferenceIndex::RemoveFirst() {
    const uint32_t number = heads_.front().number;
    PopSmallest(heads_);
    PopSmallest(markers_[number].places);
    if (!markers_[number].places.empty()) PushHead(number);
}

std::optional<uint32_t> ReferenceIndex::NextSharer(uint32_t record) const {
    return next_sharer_.Find(record);
}

}  // namespace scan695
