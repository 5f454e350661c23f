#include "types/type_map.h"

#include "input/cursor.h"
#include "report/report.h"

namespace scan695 {

void TMAP::BeginBlock() {
    base += next_index - FIRST_TYPE_INDEX;
    next_index = FIRST_TYPE_INDEX;
    unresolved = 0;
    updating = false;
    pending.clear();
    number_of_tk_.Clear();
    place_in_pending_.Clear();
}

uint32_t TMAP::Add(uint32_t key) {
    const uint32_t number = next_index++;
    number_of_tk_.Put(key, number);
    return base + number;
}

uint32_t TMAP::Find(uint32_t tk_ti) {
    uint32_t fst_ti;
    if (Lookup(tk_ti, fst_ti) != 0) return fst_ti;
    if (updating) {
        Trace("TMAP Update:Cannot find TASKING_type=%d yet\n", static_cast<int32_t>(tk_ti));
        return TYPE_NOT_FOUND;
    }
    ++unresolved;
    Trace("TMAP:Cannot find TASKING_type=%d about %X, storing as unresolved\n",
          static_cast<int32_t>(tk_ti), LastOffset());
    if (place_in_pending_.AddNew(tk_ti, static_cast<uint32_t>(pending.size())))
        pending.push_back(tk_ti);
    return tk_ti | TYPE_MARKER_BIT;
}

int TMAP::Lookup(uint32_t tk_ti, uint32_t& fst_ti) const {
    const auto number = number_of_tk_.Find(tk_ti);
    if (!number) return 0;
    fst_ti = base + *number;
    return 1;
}

std::optional<uint32_t> TMAP::FindPending(uint32_t marker, uint32_t from) const {
    if (!IsTypeMarker(marker)) return std::nullopt;
    std::optional<uint32_t> first;
    for (const uint32_t tk_ti : {marker, marker & ~TYPE_MARKER_BIT}) {
        const auto place = place_in_pending_.Find(tk_ti);
        if (place && *place >= from && (!first || *place < *first)) first = place;
    }
    return first;
}

int TkAliasMap::Find(uint32_t tk_ti, uint32_t& fst_ti) const {
    const auto found = pairs_.Find(tk_ti);
    if (!found) return 0;
    fst_ti = *found;
    return 1;
}

}  // namespace scan695
