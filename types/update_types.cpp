#include "types/update_types.h"

#include <functional>
#include <queue>
#include <utility>
#include <vector>

#include "report/report.h"
#include "store/tables.h"
#include "store/type_records.h"
#include "types/type_fields.h"
#include "types/type_state.h"

namespace scan695 {

namespace {

struct PatchCounts {
    uint32_t matched = 0;   // entries of the pending list that the field's marker stands for
    uint32_t resolved = 0;  // those of them whose type has come
};

// Tries the pending entries, in their order, on one field.
template <class WriteBack>
PatchCounts PatchField(uint32_t& field, const char* label, const WriteBack& write_back) {
    PatchCounts counts;
    for (auto number = Types.Map.FindPending(field, 0); number;
         number = Types.Map.FindPending(field, *number + 1)) {
        const uint32_t tk_ti = Types.Map.pending[*number];
        ++counts.matched;
        const uint32_t fst_ti = Types.Map.Find(tk_ti);
        if (fst_ti == TYPE_NOT_FOUND) continue;
        ++counts.resolved;
        field = fst_ti;
        Trace("%s:Updated tk_ti=%d as fst_ti=%u\n", label, static_cast<int32_t>(tk_ti), fst_ti);
        --Types.Map.unresolved;
        write_back();
        if (Types.Map.unresolved == 0) break;
    }
    return counts;
}

const char* OwnLabel(uint8_t tag) {
    switch (tag) {
        case TAG_POINTER:
            return "PTR";
        case TAG_ARRAY:
            return "ARR";
        case TAG_FUNCTION:
            return "FUN";
        default:
            return "ATT";
    }
}

// Visit one field; the result is what it holds then.
uint32_t VisitOwn(uint32_t position, TYPEINFO& record) {
    uint32_t* field = OwnReference(record);
    PatchField(*field, OwnLabel(record.type_tag),
               [&] { WriteRecord(Store.TypeTable, position, record); });
    return *field;
}

// The element visited last, be it the end of the list or of the walk, decides whether the bitfields
// of its struct can be placed now.
uint32_t VisitElement(uint32_t position, const ReferenceList& list, uint32_t number) {
    FIELDINFO field;
    ReadField(list.ElementOffset(number), field);
    const PatchCounts counts = PatchField(field.type_index, list.members ? "STR" : "FPP",
                                          [&] { WriteField(list.ElementOffset(number), field); });
    const bool last = number + 1 == list.count || Types.Map.unresolved == 0;
    if (list.members && last && counts.matched > 0 && counts.matched == counts.resolved) {
        Types.BitfieldsPending = 1;
        Types.BitfieldsStruct = position + FIRST_TYPE_INDEX;
    }
    return field.type_index;
}

uint32_t VisitPlace(Place place) {
    TYPEINFO record = {};
    ReadRecord(Store.TypeTable, place.record, record);
    return place.element == 0 ? VisitOwn(place.record, record)
                              : VisitElement(place.record, ListOf(record), place.element - 1);
}

void VisitWholeList(uint32_t position) {
    TYPEINFO record = {};
    ReadRecord(Store.TypeTable, position, record);
    const ReferenceList list = ListOf(record);
    for (uint32_t i = 0; i < list.count && Types.Map.unresolved != 0; ++i)
        VisitElement(position, list, i);
}

// A walk over the noted places, with the overlong lists between them.
class ReferenceWalk {
  public:
    void Run() {
        while (Types.Map.unresolved != 0 && VisitNext()) continue;
        for (const auto& [marker, place] : kept_) Types.References.NotePlace(marker, place);
    }

  private:
    bool VisitNext() {
        const Place* noted = Types.References.First();
        const bool shared = !shared_.empty() && (noted == nullptr || shared_.top() < *noted);
        const Place* next = shared ? &shared_.top() : noted;
        if (VisitOverlong(next)) return true;
        if (next == nullptr) return false;
        const Place place = *next;
        if (shared)
            shared_.pop();
        else
            Types.References.RemoveFirst();
        KeepMarker(VisitPlace(place), place, shared);
        return true;
    }

    // Visits the next overlong list if it stands in front of the next place. Without the trace the
    // others that share it need no visit: the first has left nothing to resolve.
    bool VisitOverlong(const Place* next) {
        const std::vector<OverlongList>& lists = Types.References.Overlong;
        if (overlong_ == lists.size()) return false;
        const OverlongList& list = lists[overlong_];
        if (next != nullptr && next->record < list.record) return false;
        ++overlong_;
        if (!list.shared || Report.DebugMode != 0) VisitWholeList(list.record);
        return true;
    }

    // A marker that stays is kept for the next walk, and shows in the other records of its list.
    void KeepMarker(uint32_t type_index, Place place, bool shared) {
        if (!IsTypeMarker(type_index)) return;
        if (!shared) kept_.push_back({type_index, place});
        if (place.element == 0) return;
        if (const auto sharer = Types.References.NextSharer(place.record))
            shared_.push({*sharer, place.element});
    }

    std::vector<std::pair<uint32_t, Place>> kept_;
    // Places that come up during this walk only, the first on top.
    std::priority_queue<Place, std::vector<Place>, std::greater<>> shared_;
    size_t overlong_ = 0;
};

}  // namespace

void UpdateTypes() {
    TMAP& map = Types.Map;
    Trace("Updating types, unresolved count=%d\n", static_cast<int32_t>(map.unresolved));
    map.updating = true;
    ReferenceWalk().Run();
    map.updating = false;
    Trace("End of Updating types, unresolved count=%d\n", static_cast<int32_t>(map.unresolved));
}

}  // namespace scan695
