// Which elements of long lists have to be looked at when the bitfields of a struct are placed
// again. That can happen once for each type that the input defines, while most elements of a list
// will never be bitfields: their type is a basic one, or a record of another kind, and stays so
// until something is written over the element.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <queue>
#include <set>
#include <vector>

#include "types/type_fields.h"

namespace scan695 {

class BitfieldWatch {
  public:
    // Calls visit(number) in ascending order for the elements of a list that may be bitfields, all
    // that are among them. A visit may write the element and append type records.
    template <class Visit>
    void VisitOpen(const ReferenceList& list, const Visit& visit) {
        WatchedList& watched = lists_[list.offset];
        TakeInGrowth(list, watched);
        TakeInRecords(watched);
        for (auto next = watched.open.begin(); next != watched.open.end();) {
            const uint32_t number = *next;
            watched.open.erase(next);
            visit(number);
            TakeInRecords(watched);
            next = watched.open.upper_bound(number);
        }
    }

    // Tells that the 16 bytes at `offset` of the image have been written over.
    void NoteWrite(uint32_t offset);

  private:
    struct Waiting {
        uint32_t type_index;
        uint32_t number;
        auto operator<=>(const Waiting&) const = default;
    };
    struct WatchedList {
        uint32_t nof_seen = 0;    // elements looked at, all that the image has
        std::set<uint32_t> open;  // numbers of those that were bitfields when they were looked at
        // Those whose type index may stand for a record that is still to come, the lowest on top.
        std::priority_queue<Waiting, std::vector<Waiting>, std::greater<>> waiting;
    };

    static void TakeInGrowth(const ReferenceList& list, WatchedList& watched);
    static void LookAt(uint32_t offset, uint32_t number, WatchedList& watched);
    static void TakeInRecords(WatchedList& watched);

    std::map<uint32_t, WatchedList> lists_;  // by their offset in the image
};

}  // namespace scan695
