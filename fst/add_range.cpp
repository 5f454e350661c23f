// A new stretch meets the table in one of five ways, told by the entries that contain its first and
// its last address; each has its function. Addresses wrap as 32-bit numbers do.
#include "fst/add_range.h"

#include <algorithm>

#include "fst/range_table.h"
#include "fst/working_arrays.h"
#include "report/report.h"

namespace scan695 {

namespace {

constexpr int32_t NONE = -1;

struct Stretch {
    uint32_t first;
    uint32_t last;
    uint32_t length;
    uint32_t module;
};

// The entries whose neighbourhood has changed. Before an operation no two neighbours have one
// module, so behind it only here can some have.
struct Touched {
    int32_t low = INT32_MAX;
    int32_t high = NONE;

    void Include(int32_t number) {
        low = std::min(low, number);
        high = std::max(high, number);
    }
};
Touched Window;

RANGEINFO& Entry(int32_t number) {
    return Work.Ranges[number];
}

void InsertRange(int32_t number, uint32_t module, uint32_t start, uint32_t length) {
    if (!Work.Ranges.Insert(number, {module, start, length})) ReportAndStop(ERROR_NO_MEMORY);
    if (Window.high >= number) ++Window.high;
    Window.Include(number);
}

void InsertStretch(int32_t number, const Stretch& stretch) {
    InsertRange(number, stretch.module, stretch.first, stretch.length);
}

// Comes in front of all insertions of an operation.
void RemoveRanges(int32_t first, int32_t last) {
    if (first > last) return;
    Work.Ranges.Remove(first, last);
    Window.Include(first);
}

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

// Case 1: the stretch lies inside one entry.
void AddInsideEntry(int32_t number, const Stretch& stretch) {
    RANGEINFO& entry = Entry(number);
    const uint32_t end = entry.address + entry.length;
    if (entry.module == stretch.module) return;
    if (entry.address == stretch.first && entry.length == stretch.length) {
        entry.module = stretch.module;
        Window.Include(number);
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
        InsertRange(number + 1, old_module, behind, end - behind);
        InsertStretch(number + 1, stretch);
    }
}

// Case 2: neither end lies in an entry.
void AddOutsideEntries(const Stretch& stretch, FoundRanges at_first, FoundRanges at_last) {
    const int32_t p = at_first.above;
    const int32_t q = at_last.below;
    if (p != NONE && q != NONE && Entry(p).address < stretch.last &&
        Entry(q).address > stretch.first) {
        RemoveRanges(p, q);
        at_first = FindRange(Work.Ranges, stretch.first);
        at_last = FindRange(Work.Ranges, stretch.last);
    }
    const int32_t below = at_first.below;
    const int32_t above = at_last.above;
    if (below != NONE && Entry(below).module == stretch.module)
        GrowToEndAt(Entry(below), stretch.last);
    else if (above != NONE && Entry(above).module == stretch.module)
        GrowToStartAt(Entry(above), stretch.first);
    else
        InsertStretch(below + 1, stretch);
}

// Case 3: only the last address lies in an entry; `p` is the first entry above the first address.
void AddIntoStartOf(int32_t b, const Stretch& stretch, int32_t p) {
    if (p != NONE && p < b) {
        RemoveRanges(p, b - 1);
        b = p;
    }
    CutToStartBehind(Entry(b), stretch.last);
    InsertStretch(b, stretch);
}

// Case 4: only the first address lies in an entry; `q` is the last entry below the last address.
void AddIntoEndOf(int32_t a, const Stretch& stretch, int32_t q) {
    RemoveRanges(a + 1, q);
    CutToEndBefore(Entry(a), stretch.first);
    InsertStretch(a + 1, stretch);
}

// Case 5: the ends lie in two entries.
void AddBetween(int32_t a, int32_t b, const Stretch& stretch) {
    if (b > a + 1) {
        RemoveRanges(a + 1, b - 1);
        b = a + 1;
    }
    if (Entry(a).module == stretch.module) {
        GrowToEndAt(Entry(a), stretch.last);
        CutToStartBehind(Entry(b), stretch.last);
    } else if (Entry(b).module == stretch.module) {
        GrowToStartAt(Entry(b), stretch.first);
        CutToEndBefore(Entry(a), stretch.first);
    } else {
        CutToEndBefore(Entry(a), stretch.first);
        CutToStartBehind(Entry(b), stretch.last);
        InsertStretch(a + 1, stretch);
    }
}

}  // namespace

void MergeNeighbours(int32_t low, int32_t high) {
    int32_t kept = low;
    for (int32_t i = low + 1; i <= high; ++i) {
        const RANGEINFO next = Entry(i);
        if (Entry(kept).module == next.module)
            GrowToEndAt(Entry(kept), next.address + next.length - 1);
        else
            Entry(++kept) = next;
    }
    Work.Ranges.Remove(kept + 1, high);
}

void AddRange(uint32_t start, uint32_t length, int32_t module) {
    ProgressTick();
    if (module == -1 || length == 0) return;
    const Stretch stretch = {start, start + length - 1, length, static_cast<uint32_t>(module)};
    // A stretch up to the last address has its end at 0, and counts as one that wraps.
    if (stretch.last < stretch.first || stretch.last == UINT32_MAX) Work.Ranges.GiveUpOrder();
    Window = {};
    const FoundRanges at_first = FindRange(Work.Ranges, stretch.first);
    const FoundRanges at_last =
        stretch.first == stretch.last ? at_first : FindRange(Work.Ranges, stretch.last);
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
    if (Window.high == NONE) return;  // nobody has a new neighbour
    MergeNeighbours(std::max(Window.low - 1, 0),
                    std::min(Window.high + 1, Work.Ranges.Count() - 1));
}

}  // namespace scan695
