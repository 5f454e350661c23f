// From bags of lifetime marks to locations.
#include "scopes/lifetimes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "input/input_state.h"
#include "input/processor.h"
#include "report/report.h"
#include "scopes/mark_groups.h"

namespace scan695 {
namespace {

// Marks in short: begins and ends in register R3 and so on.
TkLoc B(uint32_t pc, uint32_t addr, uint32_t mem = 0) {
    return {pc, 2, addr, mem};
}
TkLoc E(uint32_t pc, uint32_t addr, uint32_t mem = 0) {
    return {pc, 10, addr, mem};
}

// "100-120:3 " for a range in R3.
std::string Ranges(std::vector<TkLoc> marks) {
    Input.Processor = FindProcessor("80166");
    std::string text;
    uint32_t unterminated = 0;
    for (const LOCINFO& location : MakeLocations(marks, unterminated)) {
        char range[64];
        std::snprintf(range, sizeof range, "%x-%x:%x ", location.beg_address, location.end_address,
                      location.value);
        text += range;
    }
    return unterminated != 0 ? text + "open" : text;
}

// Ranges join when both their marks agree in storage, place and memory word. The end marks of such
// cases name another place, so that the group pass leaves the pair in the middle alone.
TEST(Lifetimes, Bags) {
    const TkLoc begin = B(0x100, 4, 7);
    const TkLoc end = E(0x120, 3, 7);
    const std::string apart = "100-120:4 120-140:4 ";
    const struct {
        const char* what;
        std::vector<TkLoc> marks;
        std::string ranges;
    } cases[] = {
        {"no marks", {}, ""},
        {"end mark first", {E(0x120, 3), B(0x100, 3)}, "100-120:3 "},
        {"addresses are unsigned", {E(0x80000000, 3), B(0x100, 3)}, "100-80000000:3 "},
        {"single end", {E(0x100, 3)}, ""},
        {"two ends", {E(0x100, 1), E(0x120, 1)}, ""},
        {"leading end and a bad interleave lose the last",
         {E(0x80, 1), B(0x100, 2), B(0x110, 3), E(0x120, 3)},
         "100-110:2 "},
        {"leading end is skipped", {E(0x80, 1), B(0x100, 2), E(0x110, 2)}, "100-110:2 "},
        {"end at the last address",
         {B(0x100, 3), E(0xFFFFFFFF, 3), B(0xFFFFFFFF, 4)},
         "100-ffffffff:3 ffffffff-ffffffff:4 open"},
        {"three in a row, behind an end that closes nothing",
         {E(0x10, 1), begin, end, B(0x120, 4, 7), E(0x130, 3, 7), B(0x130, 4, 7), E(0x140, 3, 7),
          B(0x150, 1)},
         "100-140:4 150-ffffffff:1 open"},
        {"gap", {begin, end, B(0x121, 4, 7), E(0x140, 3, 7)}, "100-120:4 121-140:4 "},
        {"other memory", {begin, end, B(0x120, 4, 6), E(0x140, 3, 7)}, apart},
        {"other place", {begin, end, B(0x120, 5, 7), E(0x140, 3, 7)}, "100-120:4 120-140:5 "},
        {"other end", {begin, end, B(0x120, 4, 7), E(0x140, 9, 7)}, apart},
        {"other end's memory", {begin, end, B(0x120, 4, 7), E(0x140, 3, 8)}, apart},
        {"other storage word", {begin, end, {0x120, 18, 4, 7}, E(0x140, 3, 7)}, apart},
    };
    for (const auto& c : cases) EXPECT_EQ(Ranges(c.marks), c.ranges) << c.what;

    // A sort that is not stable would mix so many at one address.
    std::vector<TkLoc> forty;
    for (uint32_t i = 0; i < 40; ++i) forty.push_back(B(0x100, i));
    EXPECT_EQ(Ranges(forty).substr(0, 30), "100-100:0 100-100:2 100-100:4 ");
}

// The group pass step by step, as it goes over one array with its indexes: slow and literal.
struct LiteralGroupPass {
    static constexpr size_t NONE = ~size_t{0};
    std::vector<TkLoc> marks;
    std::string trace;

    void Run() {
        for (size_t i = 0; i < marks.size();) {
            size_t n = 1;
            while (i + n < marks.size() && marks[i + n].PC == marks[i].PC) ++n;
            i = n == 1 ? i + 1 : Step(i, n);
        }
    }
    size_t Step(size_t i, size_t n) {
        size_t ends = 0;
        for (size_t a = i; a < i + n; ++a) ends += marks[a].IsEnd() ? 1 : 0;
        if (2 * ends != n) {
            const size_t a = FindSurplus(2 * ends > n, i, n);
            const size_t b = a == NONE ? NONE : Find(i, n, a, !marks[a].IsEnd());
            return b == NONE ? Interleave(i, n) : Remove(i, a, b, "");
        }
        for (size_t a = i; n > 2 && a < i + n; ++a) {
            const size_t b = marks[a].IsEnd() ? Find(i, n, a, false) : NONE;
            if (b != NONE) return Remove(i, b, a, "multiple ");
        }
        if (n > 2 || marks[i].addr != marks[i + 1].addr) return Interleave(i, n);
        return Remove(i, i, i + 1, "single ");
    }
    size_t FindSurplus(bool ends, size_t i, size_t n) const {
        for (size_t a = i; a < i + n; ++a)
            if (marks[a].IsEnd() == ends && Find(i, n, a, ends) != NONE) return a;
        return NONE;
    }
    // The first mark but `a` of the kind with the place of `a`.
    size_t Find(size_t i, size_t n, size_t a, bool ends) const {
        for (size_t b = i; b < i + n; ++b)
            if (b != a && marks[b].IsEnd() == ends && marks[b].addr == marks[a].addr) return b;
        return NONE;
    }
    size_t Interleave(size_t i, size_t n) {
        for (size_t p = i; i != 0 && p < i + n; ++p) {
            const TkLoc& before = marks[p - 1];
            size_t found = NONE;
            for (const bool any : {false, true})
                for (size_t q = p; q < i + n && found == NONE; ++q)
                    if (marks[q].IsEnd() != before.IsEnd() && (any || marks[q].addr == before.addr))
                        found = q;
            if (found != NONE) std::swap(marks[p], marks[found]);
        }
        return i + n;
    }
    size_t Remove(size_t i, size_t a, size_t b, const std::string& what) {
        trace += " removing " + what + "B-E pair(" + std::to_string(a) +
                 (what == "single " ? "" : "," + std::to_string(b)) +
                 "): addr=" + std::to_string(marks[i].PC) + "\n";
        marks.erase(marks.begin() + static_cast<long>(std::max(a, b)));
        marks.erase(marks.begin() + static_cast<long>(std::min(a, b)));
        return i;
    }
};

// The memory words of marks, which number them here.
std::vector<uint32_t> Numbers(const std::vector<TkLoc>& marks) {
    std::vector<uint32_t> numbers;
    for (const TkLoc& mark : marks) numbers.push_back(mark.mem);
    return numbers;
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
        LiteralGroupPass literal = {marks, ""};
        literal.Run();
        testing::internal::CaptureStdout();
        ResolveGroups(marks);
        ASSERT_EQ(testing::internal::GetCapturedStdout(), literal.trace) << round;
        ASSERT_EQ(Numbers(marks), Numbers(literal.marks)) << round;
    }
    Report.DebugMode = 0;
}

}  // namespace
}  // namespace scan695
