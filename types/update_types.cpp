#include "types/update_types.h"

#include <functional>
#include <queue>
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

const char* OwnLabel(TypeTag tag) {
    switch (tag) {
        case TAG_POINTER:
            return "PTR";
        case TAG_ARRAY:
            return "ARR";
        case TAG_FUNCTION:
            return "FUN";
        case TAG_ATTRIBUTE:
            return "ATT";
        case TAG_STRUCT:
        case TAG_UNION:
        case TAG_BITFIELD:
        case TAG_ENUMERATION:
        case TAG_NONE:
            break;
    }
    return "";  // has no reference of its own
}

// A walk over the noted places.
class ReferenceWalk {
  public:
    void Run() {
        while (Types.Map.unresolved != 0 && VisitNext()) continue;
        for (const Reference& reference : kept_)
            Types.References.NotePlace(reference.type_index, reference.place);
    }

  private:
    bool VisitNext() {
        const Place* noted = Types.References.First();
        const bool shared = !shared_.empty() && (noted == nullptr || shared_.top() < *noted);
        if (!shared && noted == nullptr) return false;
        const Place place = shared ? shared_.top() : *noted;
        if (shared)
            shared_.pop();
        else
            Types.References.RemoveFirst();
        if (place == last_) return true;
        last_ = place;
        KeepMarker(Visit(place), shared);
        return true;
    }

    // The result is what the place holds then.
    uint32_t Visit(Place place) {
        TYPEINFO record = {};
        ReadRecord(Store.TypeTable, place.record, record);
        return place.element == 0 ? VisitOwn(record) : VisitElement(ListOf(record));
    }

    uint32_t VisitOwn(TYPEINFO& record) const {
        uint32_t* field = OwnReference(record);
        PatchField(*field, OwnLabel(record.type_tag),
                   [&] { WriteRecord(Store.TypeTable, last_.record, record); });
        return *field;
    }

    // The element visited last, be it the end of the list or of the walk, decides whether the
    // bitfields of its struct can be placed now.
    uint32_t VisitElement(const ReferenceList& list) {
        const uint32_t number = last_.element - 1;
        const uint32_t offset = list.ElementOffset(number);
        FIELDINFO field;
        ReadField(offset, field);
        const PatchCounts counts = PatchField(field.type_index, list.members ? "STR" : "FPP", [&] {
            WriteField(offset, field);
            Types.Bitfields.NoteWrite(offset);
            if (IsTypeMarker(field.type_index)) NoteOthers(offset);
        });
        const bool last = number + 1 == list.count || Types.Map.unresolved == 0;
        if (list.members && last && counts.matched > 0 && counts.matched == counts.resolved) {
            Types.BitfieldsPending = true;
            Types.BitfieldsStruct = last_.record + FIRST_TYPE_INDEX;
        }
        return field.type_index;
    }

    // A marker that stays is kept for the next walk, and shows in the other records of its list.
    void KeepMarker(uint32_t type_index, bool shared) {
        if (!IsTypeMarker(type_index)) return;
        if (!shared) kept_.push_back({type_index, last_});
        if (last_.element == 0) return;
        if (const auto sharer = Types.References.NextSharer(last_.record))
            shared_.push({*sharer, last_.element});
    }

    // A number above 2^23 looks like a marker, in the other lists that claim its place too.
    void NoteOthers(uint32_t offset) {
        for (const Reference& reference : Types.References.PlacesOver(offset)) {
            if (reference.place > last_)
                Types.References.NotePlace(reference.type_index, reference.place);
            else if (reference.place != last_)
                kept_.push_back(reference);
        }
    }

    Place last_ = {UINT32_MAX,
                   UINT32_MAX};  // visited last; a place that is noted twice counts once
    std::vector<Reference> kept_;
    // Places that come up during this walk only, the first on top.
    std::priority_queue<Place, std::vector<Place>, std::greater<>> shared_;
};

}  // namespace

uint32_t TakeTypeNumber(uint32_t key) {
    TMAP& map = Types.Map;
    const uint32_t fst_ti = map.Add(key);
    if (!map.IsPending(key)) return fst_ti;
    Types.References.Activate(key | TYPE_MARKER_BIT);
    if (map.unresolved != 0) {
        Trace("Run UpdateTypes for fst_ti=%u as tk_ti=%u\n", fst_ti - map.base, key);
        UpdateTypes();
    }
    return fst_ti;
}

void UpdateTypes() {
    TMAP& map = Types.Map;
    Trace("Updating types, unresolved count=%d\n", static_cast<int32_t>(map.unresolved));
    map.updating = true;
    if (Report.DebugMode != 0) Types.References.ActivatePending(map.pending);
    Types.References.NoteGrowth();
    ReferenceWalk().Run();
    map.updating = false;
    Trace("End of Updating types, unresolved count=%d\n", static_cast<int32_t>(map.unresolved));
}

void NoteWrite(uint32_t offset) {
    Types.Bitfields.NoteWrite(offset);
    for (const Reference& reference : Types.References.PlacesOver(offset))
        Types.References.NotePlace(reference.type_index, reference.place);
}

}  // namespace scan695
