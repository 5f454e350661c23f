#include "types/reference_index.h"

#include <algorithm>
#include <functional>

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

// Lists without a marker need not be known again.
void ReferenceIndex::NoteList(const ReferenceList& list, uint32_t position) {
    const auto sharer = last_sharer_.Find(list.offset);
    const bool shared = sharer.has_value();
    const bool overlong = overlong_offsets_.Find(list.offset).has_value();
    if (overlong) Overlong.push_back({position, shared});
    if (shared)
        next_sharer_.Put(*sharer, position);
    else if (!overlong && !NoteElements(list, position))
        return;
    last_sharer_.Put(list.offset, position);
}

bool ReferenceIndex::NoteElements(const ReferenceList& list, uint32_t position) {
    bool has_marker = false;
    for (uint32_t i = 0; i < list.count; ++i) {
        FIELDINFO field;
        ReadField(list.ElementOffset(i), field);
        NotePlace(field.type_index, {position, i + 1});
        has_marker |= IsTypeMarker(field.type_index);
    }
    return has_marker;
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

void ReferenceIndex::DeactivateAll() {
    for (const uint32_t number : active_) markers_[number].active = false;
    active_.clear();
    heads_.clear();
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
