// AddRange case by case, against plain steps on an array, and the whole build.
#include <algorithm>

#include "store/add_range.h"
#include "store/build_range_table.h"
#include "tests/store/store_fixture.h"

namespace scan695 {
// For comparisons and messages of the tests.
bool operator==(const RANGEINFO& a, const RANGEINFO& b) {
    return a.module == b.module && a.address == b.address && a.length == b.length;
}
std::ostream& operator<<(std::ostream& out, const RANGEINFO& range) {
    return out << std::hex << "(" << range.module << ", 0x" << range.address << ", 0x"
               << range.length << ")" << std::dec;
}
}  // namespace scan695

namespace scan695::test {
namespace {

using Ranges = std::vector<RANGEINFO>;

Ranges TableContents() {
    Ranges ranges;
    for (int32_t i = 0; i < Work.Ranges.Count(); ++i) ranges.push_back(Work.Ranges[i]);
    return ranges;
}

// The operation on a plain array, with a pass over all of it behind each step.
struct PlainTable {
    Ranges t;

    int Find(uint32_t address, int mode) const {
        int lo = 0, hi = int(t.size()) - 1, mid = 0;
        bool inside = false;
        while (lo <= hi) {
            mid = (lo + hi) / 2;
            const RANGEINFO& e = t[size_t(mid)];
            if (address < e.address)
                hi = mid - 1;
            else if (address >= e.address + e.length)
                lo = mid + 1;
            else {
                inside = true;
                hi = mid - 1;
                lo = mid + 1;
            }
        }
        if (mode == 1) return inside ? mid : -1;
        if (mode == 2) return hi;
        return lo < int(t.size()) ? lo : -1;
    }
    RANGEINFO& At(int i) { return t.at(size_t(i)); }
    void Insert(int at, RANGEINFO entry) { t.insert(t.begin() + at, entry); }
    void Remove(int first, int last) {
        if (first <= last) t.erase(t.begin() + first, t.begin() + last + 1);
    }
    void CutEnd(int a, uint32_t first) { At(a).length = first - At(a).address; }
    void CutStart(int b, uint32_t last) {
        At(b).length -= last + 1 - At(b).address;
        At(b).address = last + 1;
    }
    void GrowUp(int i, uint32_t last) { At(i).length = last - At(i).address + 1; }
    void GrowDown(int i, uint32_t first) {
        At(i).length = At(i).address + At(i).length - first;
        At(i).address = first;
    }
    void Compact() {
        Ranges result;
        for (const RANGEINFO& e : t) {
            if (!result.empty() && result.back().module == e.module)
                result.back().length = e.address + e.length - result.back().address;
            else
                result.push_back(e);
        }
        t = result;
    }
    void Add(uint32_t first, uint32_t length, uint32_t module) {
        const uint32_t last = first + length - 1;
        const RANGEINFO stretch = {module, first, length};
        const int a = Find(first, 1);
        int b = first != last ? Find(last, 1) : a;
        if (a != -1 && a == b) {
            Inside(a, stretch);
        } else if (a == -1 && b == -1) {
            Outside(stretch, last);
        } else if (a == -1) {
            const int p = Find(first, 4);
            if (p != -1 && p < b) {
                Remove(p, b - 1);
                b = p;
            }
            CutStart(b, last);
            Insert(b, stretch);
        } else if (b == -1) {
            const int q = Find(last, 2);
            if (a < q) Remove(a + 1, q);
            CutEnd(a, first);
            Insert(a + 1, stretch);
        } else {
            if (b > a + 1) {
                Remove(a + 1, b - 1);
                b = a + 1;
            }
            if (At(a).module == module) {
                GrowUp(a, last);
                CutStart(b, last);
            } else if (At(b).module == module) {
                GrowDown(b, first);
                CutEnd(a, first);
            } else {
                CutEnd(a, first);
                CutStart(b, last);
                Insert(a + 1, stretch);
            }
        }
        Compact();
    }
    void Inside(int a, const RANGEINFO& s) {
        RANGEINFO& e = At(a);
        const uint32_t last = s.address + s.length - 1, e_last = e.address + e.length - 1;
        if (e.module == s.module) return;
        if (e.address == s.address && e.length == s.length) {
            e.module = s.module;
            return;
        }
        if (e.address == s.address) {
            e.address += s.length;
            e.length -= s.length;
            Insert(a, s);
        } else if (e_last == last) {
            e.length -= s.length;
            Insert(a + 1, s);
        } else {
            Insert(a + 1, {e.module, last + 1, e_last - last});
            Insert(a + 1, s);
            CutEnd(a, s.address);
        }
    }
    void Outside(const RANGEINFO& s, uint32_t last) {
        const int p = Find(s.address, 4), q = Find(last, 2);
        if (p != -1 && q != -1 && At(p).address < last && At(q).address > s.address) Remove(p, q);
        const int l = Find(s.address, 2);
        if (l != -1 && At(l).module == s.module) return GrowUp(l, last);
        const int r = Find(last, 4);
        if (r != -1 && At(r).module == s.module) return GrowDown(r, s.address);
        Insert(l + 1, s);
    }
};

class RangeTest : public StoreTest {
  protected:
    RangeTest() { EXPECT_TRUE(Work.Ranges.Allocate()); }
    static void Fill(const Ranges& ranges) {
        ASSERT_TRUE(Work.Ranges.Allocate());
        for (const RANGEINFO& range : ranges) Work.Ranges.Insert(Work.Ranges.Count(), range);
    }
};

TEST_F(RangeTest, EachCase) {
    const RANGEINFO a = {1, 0x100, 0x10}, b = {2, 0x120, 0x10}, c = {3, 0x140, 0x10};
    const struct {
        const char* name;
        Ranges before;
        RANGEINFO stretch;
        Ranges after;
    } cases[] = {
        {"no module", {a}, {0xFFFFFFFF, 0x100, 4}, {a}},
        {"no length", {a}, {2, 0x100, 0}, {a}},
        {"1: same module", {a}, {1, 0x104, 4}, {a}},
        {"1: equal", {a}, {2, 0x100, 0x10}, {{2, 0x100, 0x10}}},
        {"1: equal, fuses", {a, b}, {2, 0x100, 0x10}, {{2, 0x100, 0x30}}},
        {"1: start", {a}, {2, 0x100, 4}, {{2, 0x100, 4}, {1, 0x104, 0xC}}},
        {"1: end", {a}, {2, 0x10C, 4}, {{1, 0x100, 0xC}, {2, 0x10C, 4}}},
        {"1: end, fuses over a gap", {a, b}, {2, 0x10C, 4}, {{1, 0x100, 0xC}, {2, 0x10C, 0x24}}},
        {"1: middle", {a}, {2, 0x104, 4}, {{1, 0x100, 4}, {2, 0x104, 4}, {1, 0x108, 8}}},
        {"2: empty table", {}, {2, 0x104, 4}, {{2, 0x104, 4}}},
        {"2: below all", {a}, {2, 0x10, 4}, {{2, 0x10, 4}, a}},
        {"2: above all", {a}, {2, 0x200, 4}, {a, {2, 0x200, 4}}},
        {"2: neighbour below grows", {a, b}, {1, 0x118, 4}, {{1, 0x100, 0x1C}, b}},
        {"2: neighbour above grows", {a, b}, {2, 0x118, 4}, {a, {2, 0x118, 0x18}}},
        {"2: swallows", {a, b, c}, {4, 0x110, 0x30}, {a, {4, 0x110, 0x30}, c}},
        {"2: swallows and fuses", {a, b, {1, 0x140, 8}}, {1, 0x110, 0x28}, {{1, 0x100, 0x48}}},
        {"2: swallows all", {a, b, c}, {2, 0x80, 0x200}, {{2, 0x80, 0x200}}},
        {"3: cuts", {a, b}, {4, 0x118, 0x10}, {a, {4, 0x118, 0x10}, {2, 0x128, 8}}},
        {"3: same module", {b}, {2, 0x118, 0x10}, {{2, 0x118, 0x18}}},
        {"3: swallows", {a, b, c}, {4, 0x90, 0xB8}, {{4, 0x90, 0xB8}, {3, 0x148, 8}}},
        {"3: leaves length 0", {b}, {4, 0x118, 0x18}, {{4, 0x118, 0x18}, {2, 0x130, 0}}},
        {"4: cuts", {a, b}, {4, 0x108, 0x10}, {{1, 0x100, 8}, {4, 0x108, 0x10}, b}},
        {"4: swallows", {a, b, c}, {4, 0x108, 0x80}, {{1, 0x100, 8}, {4, 0x108, 0x80}}},
        {"4: leaves length 0", {a}, {4, 0x100, 0x18}, {{1, 0x100, 0}, {4, 0x100, 0x18}}},
        {"5: cuts both",
         {a, b},
         {4, 0x108, 0x20},
         {{1, 0x100, 8}, {4, 0x108, 0x20}, {2, 0x128, 8}}},
        {"5: first grows", {a, b}, {1, 0x108, 0x20}, {{1, 0x100, 0x28}, {2, 0x128, 8}}},
        {"5: second grows", {a, b}, {2, 0x108, 0x20}, {{1, 0x100, 8}, {2, 0x108, 0x28}}},
        {"5: swallows",
         {a, b, c},
         {4, 0x108, 0x40},
         {{1, 0x100, 8}, {4, 0x108, 0x40}, {3, 0x148, 8}}},
        {"point of another module", {a, b}, {4, 0x120, 1}, {a, {4, 0x120, 1}, {2, 0x121, 0xF}}},
        {"up to the last address", {a}, {2, 0xFFFFFFF0, 0x10}, {a, {2, 0xFFFFFFF0, 0x10}}},
    };
    for (const auto& test : cases) {
        Fill(test.before);
        AddRange(test.stretch.address, test.stretch.length,
                 static_cast<int32_t>(test.stretch.module));
        EXPECT_EQ(TableContents(), test.after) << test.name;
    }
}

TEST_F(RangeTest, SameAsPlainSteps) {
    const struct {
        uint32_t base, span, longest, modules, rounds;
    } cases[] = {
        {0x1000, 0x400, 0x40, 3, 3000},      {0x1000, 0x40000, 0x10, 200, 12000},
        {0x1000, 0x40000, 0x8000, 5, 3000},  {0, 0xFFFFFFFF, 0xFFFFFFFF, 4, 3000},
        {0xFFFFFF00, 0x200, 0x40, 3, 3000},  {0xFFFFFFF0, 0x18, 0xFFFFFFFF, 6, 3000},
        {0xFFFF0000, 0x20000, 4, 300, 9000},
    };
    Random random(7);
    for (const auto& c : cases) {
        ASSERT_TRUE(Work.Ranges.Allocate());
        PlainTable plain;
        for (uint32_t round = 0; round < c.rounds; ++round) {
            const uint32_t start = c.base + random() % c.span;
            const uint32_t length = random() % 2 == 0 ? 1 : 1 + random() % c.longest;
            const uint32_t module = random() % c.modules;
            AddRange(start, length, static_cast<int32_t>(module));
            if (length != 0) plain.Add(start, length, module);
            if (round % 64 == 0 || plain.t.size() < 50) {
                ASSERT_EQ(TableContents(), plain.t) << c.base << " round " << round;
            }
        }
        ASSERT_EQ(TableContents(), plain.t) << c.base;
    }
}

class Build : public StoreTest {
  protected:
    Build() {
        ReserveFstHeader();
        AddCode(0);
    }
    static void AddCode(uint8_t mem_type) {
        const CODEINFO head = {0x1000, 4, -1, mem_type, {}};
        AppendRecord(Store.CodeTable, head);
        AppendRecordBytes(Store.CodeTable, "code", 4);
        ++Store.Header.nof_code;
    }
    // The sections that the build reads, as the passes before it leave them.
    static Ranges Run(const std::vector<BLOCKINFO>& blocks,
                      const std::vector<std::vector<uint32_t>>& lines,
                      const std::vector<SYMINFO>& globals,
                      const std::vector<std::vector<SYMINFO>>& symbols) {
        FstHeader& header = Store.Header;
        header.nof_modules = static_cast<uint32_t>(lines.size());
        header.nof_blocks = static_cast<uint32_t>(blocks.size());
        header.nof_global_symbols = static_cast<uint32_t>(globals.size());
        Work.ModuleWork.reset(static_cast<MODULEINFO*>(
            AllocateEntries(nullptr, header.nof_modules, sizeof(MODULEINFO))));
        header.blocks_offs = SeekImageEnd();
        for (const BLOCKINFO& block : blocks) WriteToImage(&block, sizeof block);
        header.symbols_offs = SeekImageEnd();
        uint32_t first = header.nof_global_symbols;
        for (const SYMINFO& symbol : globals) WriteToImage(&symbol, sizeof symbol);
        for (size_t i = 0; i < symbols.size(); ++i) {
            Work.ModuleWork[i].first_symbol = first;
            Work.ModuleWork[i].nof_symbols = static_cast<uint32_t>(symbols[i].size());
            first += Work.ModuleWork[i].nof_symbols;
            for (const SYMINFO& symbol : symbols[i]) WriteToImage(&symbol, sizeof symbol);
        }
        header.lines_offs = SeekImageEnd();
        for (size_t i = 0; i < lines.size(); ++i) {
            Work.ModuleWork[i].first_line = header.nof_lines;
            Work.ModuleWork[i].nof_lines = static_cast<uint16_t>(lines[i].size());
            header.nof_lines += Work.ModuleWork[i].nof_lines;
            for (const uint32_t address : lines[i]) {
                const LINEINFO line = {address, static_cast<int32_t>(i), 1, 0};
                WriteToImage(&line, sizeof line);
            }
        }
        BuildRangeTable();
        return ReadSection<RANGEINFO>(header.ranges_offs, header.nof_ranges);
    }
    static BLOCKINFO Block(int32_t module, uint32_t address, uint32_t size) {
        return {address, size, -1, module, 0, 0, 1, 0};
    }
    static SYMINFO Symbol(uint32_t value, int8_t mem_type = 0, int32_t module = -1) {
        SYMINFO symbol = {};
        symbol.value = value;
        symbol.mem_type = mem_type;
        symbol.module = module;
        return symbol;
    }
};

TEST_F(Build, BlocksLinesAndSymbols) {
    const std::vector<BLOCKINFO> blocks = {Block(0, 0x1000, 0x100), Block(1, 0x1100, 0x80),
                                           Block(0, 0x1180, 0x10)};
    Ranges ranges;
    Report.DebugMode = 1;
    const std::string console = ConsoleOf([&] {
        ranges = Run(blocks, {{0x1000, 0x1020}, {0x1100, 0x1150, 0x11F0}}, {},
                     {{Symbol(0x2005), Symbol(0x3000, 2)}, {Symbol(0x2000)}});
    });
    EXPECT_EQ(
        ranges,
        Ranges({{0, 0x1000, 0x100}, {1, 0x1100, 0x80}, {0, 0x1180, 0x10}, {1, 0x11F0, 0xE15}}));
    EXPECT_EQ(console,
              "Creating module range table\nCode without module: addr=1000, lng=4\n"
              "Using blocks to build range table\n"
              "use block_0: mod_idx=0, addr=0x1000, length=0x100\n"
              "use block_1: mod_idx=1, addr=0x1100, length=0x80\n"
              "use block_2: mod_idx=0, addr=0x1180, length=0x10\n"
              "Using lines to build range table\nUsing code symbols to build range table\n");
}

TEST_F(Build, PointsAndGaps) {
    const std::vector<BLOCKINFO> blocks = {
        Block(0, 0x100, 1),    Block(1, 0x200, 1), Block(0, 0x300, 0x10), Block(1, 0x32F, 0x11),
        Block(0, 0x360, 0x10), Block(2, 0x400, 0), Block(-1, 0x500, 9)};
    // A gap of 31 closes, one of 32 stays; without lines and code symbols the points stay too.
    const Ranges all = {
        {0, 0x100, 1}, {1, 0x200, 1}, {0, 0x300, 0x2F}, {1, 0x32F, 0x11}, {0, 0x360, 0x10}};
    EXPECT_EQ(Run(blocks, {{}, {}, {}}, {Symbol(0x200, 2)}, {}), all);
    Reset();
    AddCode(0);
    EXPECT_EQ(Run(blocks, {{}, {}, {}}, {Symbol(0x208)}, {}), Ranges(all.begin() + 2, all.end()));
    Reset();
    AddCode(0);
    // A line in the middle of another module's block goes, and the halves fuse over it.
    EXPECT_EQ(Run({Block(0, 0x100, 0x100)}, {{}, {0x180}}, {}, {}), Ranges({{0, 0x100, 0x100}}));
}

TEST_F(Build, WithoutCodeOrModules) {
    Reset();
    AddCode(2);
    EXPECT_EQ(Run({Block(0, 0x100, 0x10)}, {{0x100}}, {}, {}), Ranges());
    EXPECT_EQ(Store.Header.ranges_offs, static_cast<uint32_t>(Store.FstImage.Size()));
    Reset();
    AddCode(0);
    Report.DebugMode = 1;
    EXPECT_EQ(ConsoleOf([] { EXPECT_EQ(Run({}, {}, {}, {}), Ranges()); }), "");
    EXPECT_EQ(Store.Header.ranges_offs, 0U);
}

}  // namespace
}  // namespace scan695::test
