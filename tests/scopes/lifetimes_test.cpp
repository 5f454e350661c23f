// From bags of lifetime marks to locations.
#include "scopes/lifetimes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "report/report.h"
#include "scopes/mark_groups.h"
#include "store/tables.h"

namespace scan695 {
namespace {

// Marks in short: begins and ends in register R3 and so on.
TkLoc B(uint32_t pc, uint32_t addr) {
    return {pc, 2, addr, 0};
}
TkLoc E(uint32_t pc, uint32_t addr) {
    return {pc, 10, addr, 0};
}

// "100-120:3" for a range in R3, several with blanks between.
std::string Ranges(std::vector<TkLoc> marks, uint32_t& unterminated) {
    Store.Header.processor = PROCESSOR_C166_FAMILY;
    std::string text;
    for (const LOCINFO& location : MakeLocations(marks, unterminated)) {
        char range[64];
        std::snprintf(range, sizeof range, "%s%x-%x:%x", text.empty() ? "" : " ",
                      location.beg_address, location.end_address, location.value);
        text += range;
        EXPECT_EQ(location.storage_class, STORAGE_REGISTER);
        EXPECT_EQ(location.mem_type, MEM_REGISTER);
        EXPECT_EQ(location.exec_mem_type, 0);
    }
    return text;
}

TEST(Lifetimes, Bags) {
    const struct {
        const char* what;
        std::vector<TkLoc> marks;
        std::string ranges;
        uint32_t unterminated = 0;
    } cases[] = {
        {"no marks", {}, ""},
        {"one range", {B(0x100, 3), E(0x120, 3)}, "100-120:3"},
        {"end mark first", {E(0x120, 3), B(0x100, 3)}, "100-120:3"},
        {"addresses are unsigned", {E(0x80000000, 3), B(0x100, 3)}, "100-80000000:3"},
        {"moves", {B(0x100, 3), E(0x120, 3), B(0x120, 4), E(0x140, 4)}, "100-120:3 120-140:4"},
        {"goes on", {B(0x100, 3), E(0x120, 3), B(0x120, 3), E(0x140, 3)}, "100-140:3"},
        {"no end", {B(0x100, 3)}, "100-ffffffff:3", 1},
        {"single end", {E(0x100, 3)}, ""},
        {"lone pair", {B(0x100, 3), E(0x100, 3)}, ""},
        {"lone pair that moves", {B(0x100, 3), E(0x100, 4)}, "100-ffffffff:3", 1},
        {"two pairs at one address", {E(0x100, 1), E(0x100, 2), B(0x100, 1), B(0x100, 2)}, ""},
        {"surplus begin", {E(0x100, 1), B(0x100, 1), B(0x100, 1)}, "100-ffffffff:1", 1},
        {"surplus without twin stays",
         {B(0x100, 1), E(0x120, 1), B(0x120, 2), B(0x120, 3), E(0x140, 2)},
         "100-120:1 120-120:2",
         0},
        {"two ends", {E(0x100, 1), E(0x120, 1)}, ""},
        {"leading end and a bad interleave lose the last",
         {E(0x80, 1), B(0x100, 2), B(0x110, 3), E(0x120, 3)},
         "100-110:2"},
        {"leading end is skipped", {E(0x80, 1), B(0x100, 2), E(0x110, 2)}, "100-110:2"},
        {"interleave by place",
         {B(0x100, 1), E(0x120, 2), E(0x120, 1), B(0x120, 5), B(0x120, 6)},
         "100-120:1 120-120:5 120-ffffffff:6",
         1},
        {"end at the last address",
         {B(0x100, 3), E(0xFFFFFFFF, 3), B(0xFFFFFFFF, 4)},
         "100-ffffffff:3 ffffffff-ffffffff:4",
         1},
    };
    for (const auto& c : cases) {
        uint32_t unterminated = 0;
        EXPECT_EQ(Ranges(c.marks, unterminated), c.ranges) << c.what;
        EXPECT_EQ(unterminated, c.unterminated) << c.what;
    }
}

// Ranges join when both their marks agree in storage, place and memory word. The end marks name
// another place here, so that the group pass leaves the pair in the middle alone.
TEST(Lifetimes, Concatenation) {
    const TkLoc begin = {0x100, 2, 4, 7};
    const TkLoc end = {0x120, 10, 3, 7};
    const struct {
        const char* what;
        TkLoc next_begin, next_end;
        std::string ranges;
    } cases[] = {
        {"same", {0x120, 2, 4, 7}, {0x140, 10, 3, 7}, "100-140:4"},
        {"gap", {0x121, 2, 4, 7}, {0x140, 10, 3, 7}, "100-120:4 121-140:4"},
        {"other memory", {0x120, 2, 4, 6}, {0x140, 10, 3, 7}, "100-120:4 120-140:4"},
        {"other place", {0x120, 2, 5, 7}, {0x140, 10, 3, 7}, "100-120:4 120-140:5"},
        {"other end", {0x120, 2, 4, 7}, {0x140, 10, 9, 7}, "100-120:4 120-140:4"},
        {"other end's memory", {0x120, 2, 4, 7}, {0x140, 10, 3, 8}, "100-120:4 120-140:4"},
        {"other storage word", {0x120, 18, 4, 7}, {0x140, 10, 3, 7}, "100-120:4 120-140:4"},
    };
    for (const auto& c : cases) {
        uint32_t unterminated = 0;
        EXPECT_EQ(Ranges({begin, end, c.next_begin, c.next_end}, unterminated), c.ranges) << c.what;
    }
    uint32_t unterminated = 0;  // three in a row, behind an end that closes nothing
    EXPECT_EQ(Ranges({E(0x10, 1),
                      {0x100, 2, 4, 7},
                      end,
                      {0x120, 2, 4, 7},
                      {0x130, 10, 3, 7},
                      {0x130, 2, 4, 7},
                      {0x140, 10, 3, 7},
                      B(0x150, 1)},
                     unterminated),
              "100-140:4 150-ffffffff:1");
}

// The group pass step by step, as it goes over one array with its indexes: slow and literal.
class LiteralGroupPass {
  public:
    explicit LiteralGroupPass(std::vector<TkLoc> marks) : marks_(std::move(marks)) {}

    void Run() {
        for (size_t i = 0; i < marks_.size();) {
            size_t n = 1;
            while (i + n < marks_.size() && marks_[i + n].PC == marks_[i].PC) ++n;
            i = n == 1 ? i + 1 : Step(i, n);
        }
    }
    const std::vector<TkLoc>& Marks() const { return marks_; }
    const std::string& Trace() const { return trace_; }

  private:
    size_t Step(size_t i, size_t n) {
        const auto ends = static_cast<size_t>(
            std::count_if(&marks_[i], &marks_[i] + n, [](const TkLoc& m) { return m.IsEnd(); }));
        const size_t begins = n - ends;
        if (begins != ends) {
            const size_t a = FindSurplus(begins < ends, i, n);
            const size_t k = a == NONE ? NONE : Find(i, n, a, !marks_[a].IsEnd());
            if (k == NONE) return Interleave(i, n);
            Note(" removing B-E pair(%d,%d): addr=%x\n", a, k, marks_[a].PC);
            return Remove(a, k, i);
        }
        for (size_t a = i; n > 2 && a < i + n; ++a) {
            const size_t b = marks_[a].IsEnd() ? Find(i, n, a, false) : NONE;
            if (b == NONE) continue;
            Note(" removing multiple B-E pair(%d,%d): addr=%x\n", b, a, marks_[b].PC);
            return Remove(a, b, i);
        }
        if (n > 2 || marks_[i].addr != marks_[i + 1].addr) return Interleave(i, n);
        char line[64];
        std::snprintf(line, sizeof line, " removing single B-E pair(%d): addr=%x\n",
                      static_cast<int>(i), marks_[i].PC);
        trace_ += line;
        return Remove(i, i + 1, i);
    }
    size_t FindSurplus(bool ends, size_t i, size_t n) const {
        for (size_t a = i; a < i + n; ++a)
            if (marks_[a].IsEnd() == ends && Find(i, n, a, ends) != NONE) return a;
        return NONE;
    }
    // The first mark but `a` of the kind with the place of `a`.
    size_t Find(size_t i, size_t n, size_t a, bool ends) const {
        for (size_t b = i; b < i + n; ++b)
            if (b != a && marks_[b].IsEnd() == ends && marks_[b].addr == marks_[a].addr) return b;
        return NONE;
    }
    size_t Interleave(size_t i, size_t n) {
        for (size_t p = i; i != 0 && p < i + n; ++p) {
            const TkLoc& before = marks_[p - 1];
            size_t found = NONE;
            for (const bool any : {false, true})
                for (size_t q = p; q < i + n && found == NONE; ++q)
                    if (marks_[q].IsEnd() != before.IsEnd() &&
                        (any || marks_[q].addr == before.addr))
                        found = q;
            if (found != NONE) std::swap(marks_[p], marks_[found]);
        }
        return i + n;
    }
    size_t Remove(size_t a, size_t b, size_t i) {
        marks_.erase(marks_.begin() + static_cast<long>(std::max(a, b)));
        marks_.erase(marks_.begin() + static_cast<long>(std::min(a, b)));
        return i;
    }
    void Note(const char* format, size_t a, size_t b, uint32_t pc) {
        char line[80];
        std::snprintf(line, sizeof line, format, static_cast<int>(a), static_cast<int>(b), pc);
        trace_ += line;
    }

    static constexpr size_t NONE = ~size_t{0};
    std::vector<TkLoc> marks_;
    std::string trace_;
};

std::string Text(const std::vector<TkLoc>& marks) {
    std::string text;
    for (const TkLoc& mark : marks)
        text += (mark.IsEnd() ? " E" : " B") + std::to_string(mark.PC) + ":" +
                std::to_string(mark.addr) + "/" + std::to_string(mark.mem);
    return text;
}

// Random bags, with few addresses and places so that groups are crowded: the same marks in the same
// order, and the same lines in the trace.
TEST(Lifetimes, GroupPassAgainstItsLiteralSteps) {
    std::mt19937 random(695);
    Report.DebugMode = 1;
    for (int round = 0; round < 3000; ++round) {
        const uint32_t places = 1 + random() % 4;
        std::vector<TkLoc> marks(1 + random() % 14);
        for (uint32_t i = 0; i < marks.size(); ++i)
            marks[i] = {uint32_t(random() % 3), 2 + 8 * uint32_t(random() % 2),
                        uint32_t(random() % places), i};
        std::stable_sort(marks.begin(), marks.end(), [](const TkLoc& a, const TkLoc& b) {
            return a.PC != b.PC ? a.PC < b.PC : a.IsEnd() > b.IsEnd();
        });
        LiteralGroupPass literal(marks);
        literal.Run();
        testing::internal::CaptureStdout();
        std::vector<TkLoc> resolved = marks;
        ResolveGroups(resolved);
        ASSERT_EQ(testing::internal::GetCapturedStdout(), literal.Trace()) << Text(marks);
        ASSERT_EQ(Text(resolved), Text(literal.Marks())) << Text(marks);
    }
    Report.DebugMode = 0;
}

}  // namespace
}  // namespace scan695
