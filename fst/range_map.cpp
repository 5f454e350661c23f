// A new stretch meets the table in one of five ways, told by the entries that contain its first and
// its last address; each has its function. Addresses wrap as 32-bit numbers do.
#include "fst/range_map.h"

#include <algorithm>

#include "report/report.h"

namespace scan695 {

namespace {

constexpr int32_t NONE = -1;

void CutToEndBefore(RANGEINFO& entry, uint32_t first) {
    entry.length = first - entry.address;
}

void CutToStartBehind(RANGEINFO& entry, uint32_t last) {
    const uint32_t start = last + 1;
    entry.length -= start - entry.address;
    entry.address = start;
}

void GrowToEndAt(RANGEINFO& entry, uint32_t last) {
    entry.length = last + 1 - entry.address;
}

void GrowToStartAt(RANGEINFO& entry, uint32_t first) {
    entry.length += entry.address - first;
    entry.address = first;
}

}  // namespace

void RangeMap::InsertRange(int32_t number, const RANGEINFO& entry) {
    table_.Insert(number, entry);
    if (touched_.high >= number) ++touched_.high;
    touched_.Include(number);
}

void RangeMap::InsertStretch(int32_t number, const Stretch& stretch) {
    InsertRange(number, {stretch.module, stretch.first, stretch.length});
}

// Comes in front of all insertions of an operation.
void RangeMap::RemoveRanges(int32_t first, int32_t last) {
    if (first > last) return;
    table_.Remove(first, last);
    touched_.Include(first);
}

// Case 1: the stretch lies inside one entry.
void RangeMap::AddInsideEntry(int32_t number, const Stretch& stretch) {
    RANGEINFO& entry = table_[number];
    const uint32_t end = entry.address + entry.length;
    if (entry.module == stretch.module) return;
    if (entry.address == stretch.first && entry.length == stretch.length) {
        entry.module = stretch.module;
        touched_.Include(number);
    } else if (entry.address == stretch.first) {
        entry.address += stretch.length;
        entry.length -= stretch.length;
        InsertStretch(number, stretch);
    } else if (end == stretch.last + 1) {
        entry.length -= stretch.length;
        InsertStretch(number + 1, stretch);
    } else {
        const uint32_t behind = stretch.last + 1;
        const uint32_t old_module = entry.module;
        CutToEndBefore(entry, stretch.first);
        InsertRange(number + 1, {old_module, behind, end - behind});
        InsertStretch(number + 1, stretch);
    }
}

// Case 2: neither end lies in an entry.
void RangeMap::AddOutsideEntries(const Stretch& stretch, FoundRanges at_first,
                                 FoundRanges at_last) {
    const int32_t p = at_first.above;
    const int32_t q = at_last.below;
    if (p != NONE && q != NONE && table_[p].address < stretch.last &&
        table_[q].address > stretch.first) {
        RemoveRanges(p, q);
        at_first = FindRange(table_, stretch.first);
        at_last = FindRange(table_, stretch.last);
    }
    const int32_t below = at_first.below;
    const int32_t above = at_last.above;
    if (below != NONE && table_[below].module == stretch.module)
        GrowToEndAt(table_[below], stretch.last);
    else if (above != NONE && table_[above].module == stretch.module)
        GrowToStartAt(table_[above], stretch.first);
    else
        InsertStretch(below + 1, stretch);
}

// Case 3: only the last address lies in an entry; `p` is the first entry above the first address.
void RangeMap::AddIntoStartOf(int32_t b, const Stretch& stretch, int32_t p) {
    if (p != NONE && p < b) {
        RemoveRanges(p, b - 1);
        b = p;
    }
    CutToStartBehind(table_[b], stretch.last);
    InsertStretch(b, stretch);
}

// Case 4: only the first address lies in an entry; `q` is the last entry below the last address.
void RangeMap::AddIntoEndOf(int32_t a, const Stretch& stretch, int32_t q) {
    RemoveRanges(a + 1, q);
    CutToEndBefore(table_[a], stretch.first);
    InsertStretch(a + 1, stretch);
}

// Case 5: the ends lie in two entries.
void RangeMap::AddBetween(int32_t a, int32_t b, const Stretch& stretch) {
    if (b > a + 1) {
        RemoveRanges(a + 1, b - 1);
        b = a + 1;
    }
    if (table_[a].module == stretch.module) {
        GrowToEndAt(table_[a], stretch.last);
        CutToStartBehind(table_[b], stretch.last);
    } else if (table_[b].module == stretch.module) {
        GrowToStartAt(table_[b], stretch.first);
        CutToEndBefore(table_[a], stretch.first);
    } else {
        CutToEndBefore(table_[a], stretch.first);
        CutToStartBehind(table_[b], stretch.last);
        InsertStretch(a + 1, stretch);
    }
}

void RangeMap::MergeNeighbours(int32_t low, int32_t high) {
    int32_t kept = low;
    for (int32_t i = low + 1; i <= high; ++i) {
        const RANGEINFO next = table_[i];
        if (table_[kept].module == next.module)
            GrowToEndAt(table_[kept], next.address + next.length - 1);
        else
            table_[++kept] = next;
    }
    table_.Remove(kept + 1, high);
}

void RangeMap::AddRange(uint32_t start, uint32_t length, int32_t module) {
    ProgressTick();
    if (module == -1 || length == 0) return;
    const Stretch stretch = {start, start + length - 1, length, static_cast<uint32_t>(module)};
    // A stretch up to the last address has its end at 0, and counts as one that wraps.
    if (stretch.last < stretch.first || stretch.last == UINT32_MAX) table_.GiveUpOrder();
    touched_ = {};
    const FoundRanges at_first = FindRange(table_, stretch.first);
    const FoundRanges at_last =
        stretch.first == stretch.last ? at_first : FindRange(table_, stretch.last);
    const int32_t a = at_first.containing;
    const int32_t b = at_last.containing;
    if (a == NONE && b == NONE)
        AddOutsideEntries(stretch, at_first, at_last);
    else if (a == b)
        AddInsideEntry(a, stretch);
    else if (a == NONE)
        AddIntoStartOf(b, stretch, at_first.above);
    else if (b == NONE)
        AddIntoEndOf(a, stretch, at_last.below);
    else
        AddBetween(a, b, stretch);
    if (touched_.high == NONE) return;  // nobody has a new neighbour
    MergeNeighbours(std::max(touched_.low - 1, 0), std::min(touched_.high + 1, table_.Count() - 1));
}

}  // namespace scan695
