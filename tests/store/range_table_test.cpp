// AddRange against plain steps on an array, and the whole build.
#include <algorithm>

#include "fst/post_process.h"
#include "tests/store/store_fixture.h"

namespace scan695 {
bool operator==(const RANGEINFO& a, const RANGEINFO& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}
}  // namespace scan695

namespace scan695::test {
namespace {

using Ranges = std::vector<RANGEINFO>;

RangeMap Table;

Ranges TableContents() {
    Ranges ranges;
    for (int32_t i = 0; i < Table.Table().Count(); ++i) ranges.push_back(Table.Table()[i]);
    return ranges;
}

// The operation on a plain array, with a pass over all of it behind each step.
struct PlainTable {
    Ranges t;

    // Where addresses wrap, the steps of the search count.
    FoundRanges Find(uint32_t address) const {
        FoundRanges found = {-1, int(t.size()) - 1, 0};
        while (found.above <= found.below) {
            const int mid = (found.above + found.below) / 2;
            const RANGEINFO& e = t[size_t(mid)];
            const bool is_below = address < e.address;
            const bool is_above = !is_below && address >= e.address + e.length;
            if (!is_below && !is_above) found.containing = mid;
            if (!is_above) found.below = mid - 1;
            if (!is_below) found.above = mid + 1;
        }
        if (found.above == int(t.size())) found.above = -1;
        return found;
    }
    RANGEINFO& At(int i) { return t.at(size_t(i)); }
    // Puts entries in the place of those from `first` up to `end`.
    void Replace(int first, int end, const Ranges& entries) {
        if (first < end) t.erase(t.begin() + first, t.begin() + end);
        t.insert(t.begin() + first, entries.begin(), entries.end());
    }
    void Fuse() {
        RANGEINFO* kept = t.data();
        const RANGEINFO* const end = kept + t.size();
        for (const RANGEINFO* e = kept + 1; e < end; ++e) {
            if (e->module == kept->module)
                kept->length = e->address + e->length - kept->address;
            else
                *++kept = *e;
        }
        t.resize(size_t(kept + 1 - t.data()));
    }
    void Add(const RANGEINFO& s) {
        const FoundRanges low = Find(s.address);
        const FoundRanges high = Find(s.address + s.length - 1);
        if (low.containing == -1 && high.containing == -1)
            AddOutside(s, low, high);
        else if (low.containing == high.containing)
            AddInside(s, low.containing);
        else
            AddAcross(s, low, high);
        Fuse();
    }
    void AddInside(const RANGEINFO& s, int a) {
        const RANGEINFO e = At(a);
        const uint32_t end = s.address + s.length;
        Ranges pieces = {{e.module, e.address, s.address - e.address},
                         s,
                         {e.module, end, e.address + e.length - end}};
        std::erase_if(pieces, [](const RANGEINFO& piece) { return piece.length == 0; });
        Replace(a, a + 1, pieces);
    }
    void AddOutside(const RANGEINFO& s, FoundRanges low, FoundRanges high) {
        const uint32_t last = s.address + s.length - 1;
        const int p = low.above, q = high.below;
        if (p != -1 && q != -1 && At(p).address < last && At(q).address > s.address) {
            Replace(p, q + 1, {});
            low = Find(s.address);
            high = Find(last);
        }
        const int l = low.below, r = high.above;
        if (r != -1 && At(r).module == s.module && (l == -1 || At(l).module != s.module))
            At(r) = {s.module, s.address, At(r).address + At(r).length - s.address};
        else
            Replace(l + 1, l + 1, {s});
    }
    void AddAcross(const RANGEINFO& s, const FoundRanges& low, const FoundRanges& high) {
        const int a = low.containing, b = high.containing;
        const uint32_t end = s.address + s.length;
        // Only where the table wraps does `b` come first.
        const bool grows = b != -1 && b < a && At(b).module == s.module && At(a).module != s.module;
        const uint32_t start = grows ? s.address : end;
        if (a != -1) At(a).length = s.address - At(a).address;
        if (b != -1) At(b) = {At(b).module, start, At(b).address + At(b).length - start};
        const int first = a != -1 ? a + 1 : low.above != -1 ? std::min(low.above, b) : b;
        if (!grows) Replace(first, b != -1 ? b : high.below + 1, {s});
    }
};

using RangeTest = StoreTest;

// Halfway and at the end a stretch swallows the middle of the table, which is many pages large.
TEST_F(RangeTest, SameAsPlainSteps) {
    const struct {
        uint32_t base, span, longest, modules, rounds, runs = 1;
    } cases[] = {{0x1000, 0x40, 0x10, 3, 8, 3000},   {0x1000, 0x2000000, 8, 1000, 40000},
                 {0x1000, 0x40000, 0x8000, 5, 3000}, {0, 0xFFFFFFFF, 0xFFFFFFFF, 4, 3000},
                 {0xFFFFFF00, 0x200, 0x40, 3, 3000}, {0xFFFFFFF0, 0x18, 0xFFFFFFFF, 6, 3000},
                 {0xFFFF0000, 0x20000, 4, 300, 9000}};
    Random random(7);
    int32_t most_swallowed = 0;
    for (const auto& c : cases) {
        PlainTable plain;
        for (uint32_t round = 0; round < c.rounds * c.runs; ++round) {
            if (round % c.rounds == 0) {
                Table = RangeMap();
                plain.t.clear();
            }
            RANGEINFO stretch = {random() % c.modules, c.base + random() % c.span, 1};
            if (random() % 2 == 0) stretch.length += random() % c.longest;
            const bool swallows = c.runs == 1 && (round + 1) % (c.rounds / 2) == 0;
            if (swallows) stretch = {0, c.base + c.span / 4, c.span / 2};
            const int32_t before = Table.Table().Count();
            Table.AddRange(stretch.address, stretch.length, int32_t(stretch.module));
            most_swallowed = std::max(most_swallowed, before - Table.Table().Count());
            plain.Add(stretch);
            if (swallows || round % 64 == 0 || plain.t.size() < 50) {
                ASSERT_EQ(TableContents(), plain.t) << c.base << " round " << round;
            }
        }
    }
    EXPECT_GT(most_swallowed, 16 * RangeTable::PAGE_ENTRIES);
}

class Build : public StoreTest {
  protected:
    // The ranges that the passes make of what was added; afterwards the store is a fresh one.
    static Ranges Built() {
        AddCode(0x1000, "code");
        ConsoleOf(PostProcess);
        const auto ranges = ReadSection<RANGEINFO>(header.ranges_offs, header.nof_ranges);
        Reset();
        return ranges;
    }
};

TEST_F(Build, BlocksLinesAndSymbols) {
    AddModule("a");
    AddBlock(0x1000, 0x100, -1, 0);
    AddLine(0x1020, 1, 0);
    AddOfModule(NewSymbol("", 0x2005, MEM_CODE));
    AddOfModule(NewSymbol("", 0x3000, MEM_DATA));
    AddModule("b");
    AddBlock(0x1100, 0x80, -1, 1);
    for (const uint32_t address : {0x1150U, 0x1080U, 0x11F0U}) AddLine(address, 1, 1);
    AddOfModule(NewSymbol("", 0x2000, MEM_CODE));
    AddBlock(0x1180, 0x10, -1, 0);
    EXPECT_EQ(
        Built(),
        Ranges({{0, 0x1000, 0x100}, {1, 0x1100, 0x80}, {0, 0x1180, 0x10}, {1, 0x11F0, 0xE15}}));
}

TEST_F(Build, UpToTheLastAddress) {
    AddModule("a");
    AddModule("b");
    AddBlock(0xFFFFFF00, 0x100, -1, 0);
    AddBlock(0xFFFFFFF0, 8, -1, 1);
    EXPECT_EQ(Built(), Ranges({{0, 0xFFFFFF00, 0x100}, {1, 0xFFFFFFF0, 8}}));
}

// A gap of 31 closes, one of 32 stays; without lines and code symbols the points stay too.
TEST_F(Build, PointsAndGaps) {
    const Ranges all = {
        {0, 0x100, 1}, {1, 0x200, 1}, {0, 0x300, 0x2F}, {1, 0x32F, 0x11}, {0, 0x360, 0x10}};
    for (const std::string source : {"", "symbol", "line"}) {
        for (const char* name : {"a", "b", "c"}) AddModule(name);
        for (const RANGEINFO& range : all)
            AddBlock(range.address, range.address == 0x300 ? 0x10 : range.length, -1,
                     int32_t(range.module));
        AddBlock(0x400, 0, -1, 2);
        AddBlock(0x500, 9, -1, -1);
        AddGlobal(NewSymbol("", 0x208, source == "symbol" ? MEM_CODE : MEM_DATA));
        if (source == "line") AddLine(0x400, 1, 2);
        EXPECT_EQ(Built(), source.empty() ? all : Ranges(all.begin() + 2, all.end())) << source;
    }
}

}  // namespace
}  // namespace scan695::test
