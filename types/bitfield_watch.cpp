#include "types/bitfield_watch.h"

#include "store/tables.h"
#include "store/type_records.h"

namespace scan695 {

namespace {

constexpr uint32_t ELEMENT = sizeof(FIELDINFO);
constexpr uint32_t LONGEST_LIST = UINT16_MAX * ELEMENT;  // bytes that a record can claim

}  // namespace

// A list that claims more elements than it has gets more of them as the image grows.
void BitfieldWatch::TakeInGrowth(const ReferenceList& list, WatchedList& watched) {
    for (uint32_t& number = watched.nof_seen; number < list.count; ++number) {
        const uint32_t offset = list.ElementOffset(number);
        if (offset + TYPE_INDEX_AT >= Store.FstImage.Size()) return;
        LookAt(offset, number, watched);
    }
}

void BitfieldWatch::LookAt(uint32_t offset, uint32_t number, WatchedList& watched) {
    FIELDINFO element;
    ReadField(offset, element);
    if (IsRecordType(element.type_index)) watched.waiting.push({element.type_index, number});
}

void BitfieldWatch::TakeInRecords(WatchedList& watched) {
    auto& waiting = watched.waiting;
    while (!waiting.empty() &&
           waiting.top().type_index - FIRST_TYPE_INDEX < Store.Header.nof_types) {
        const auto [type_index, number] = waiting.top();
        waiting.pop();
        TYPEINFO record = {};
        ReadRecord(Store.TypeTable, type_index - FIRST_TYPE_INDEX, record);
        if (record.type_tag == TAG_BITFIELD) watched.open.insert(number);
    }
}

// What overlong lists claim may lie over other lists, so several elements may have a new type.
void BitfieldWatch::NoteWrite(uint32_t offset) {
    const uint32_t latest = offset + ELEMENT - uint32_t{sizeof(uint32_t)} - TYPE_INDEX_AT;
    for (auto list = lists_.upper_bound(latest); list != lists_.begin();) {
        auto& [first, watched] = *--list;
        if (latest - first > LONGEST_LIST) return;
        const uint32_t number = (latest - first) / ELEMENT;
        if (number < watched.nof_seen) LookAt(first + number * ELEMENT, number, watched);
    }
}

}  // namespace scan695
