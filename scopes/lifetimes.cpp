#include "scopes/lifetimes.h"

#include <algorithm>

#include "report/report.h"
#include "scopes/asn.h"
#include "scopes/conversions.h"
#include "scopes/mark_groups.h"

namespace scan695 {

namespace {

void TraceMarks(int stage, const std::vector<TkLoc>& marks) {
    if (Report.DebugMode == 0) return;
    int32_t number = 0;
    for (const TkLoc& mark : marks)
        Trace("TkLoc%d[%3d] PC=0x%08x, sc=%08x, addr=%08x, mem=%08x\n", stage, number++, mark.PC,
              mark.sc, mark.addr, mark.mem);
}

// By address, at one address ends before begins. Marks that compare equal keep their order.
bool CompareTkLoc(const TkLoc& a, const TkLoc& b) {
    if (a.PC != b.PC) return a.PC < b.PC;
    return a.IsEnd() && !b.IsEnd();
}

// A variable whose last mark is a begin lives to the end of its scope.
void AppendFakeEnd(std::vector<TkLoc>& marks, uint32_t& unterminated) {
    TkLoc mark = marks.back();
    if (mark.IsEnd()) return;
    mark.PC = OPEN_END;
    mark.sc |= TkLoc::END;
    Trace(" appending fake TkLoc at %d, PC=0xffffffff\n", static_cast<int32_t>(marks.size()));
    marks.push_back(mark);
    ++unterminated;
}

bool SamePlace(const TkLoc& a, const TkLoc& b) {
    return a.sc == b.sc && a.addr == b.addr && a.mem == b.mem;
}

// Marks 0 and 1 are a range, next[0] and next[1] the one behind it: nothing changes between them.
bool GoesOn(const TkLoc* range, const TkLoc* next) {
    return range[1].PC == next[0].PC && SamePlace(range[0], next[0]) &&
           SamePlace(range[1], next[1]);
}

// Where the pairs begin: an end mark in front of all closes nothing.
size_t FirstPair(const std::vector<TkLoc>& marks) {
    return marks.front().IsEnd() ? 1 : 0;
}

// Joins ranges that go on in the next one. The last range joined stands at `last`.
void Concatenate(std::vector<TkLoc>& marks) {
    size_t last = FirstPair(marks);
    size_t next = last + 2;
    for (; next + 1 < marks.size(); next += 2) {
        if (GoesOn(&marks[last], &marks[next])) {
            Trace(" TkLoc: concatenating %d and %d\n", static_cast<int32_t>(last + 1),
                  static_cast<int32_t>(last + 2));
        } else {
            last += 2;
            marks[last] = marks[next];
        }
        marks[last + 1] = marks[next + 1];
    }
    if (next > marks.size()) return;
    const auto gap = marks.begin() + static_cast<std::ptrdiff_t>(last + 2);
    marks.erase(gap, marks.begin() + static_cast<std::ptrdiff_t>(next));
}

void TraceBadInterleave(const std::vector<TkLoc>& marks) {
    for (size_t i = 0; i + 1 < marks.size(); ++i)
        if (marks[i].IsEnd() == marks[i + 1].IsEnd())
            Trace("**** Bad interleave at %d\n", static_cast<int32_t>(i));
}

// Of the end mark the address alone counts.
LOCINFO MakeLocation(const TkLoc& begin, const TkLoc& end) {
    LOCINFO location = {};
    location.beg_address = begin.PC;
    location.end_address = end.PC;
    location.storage_class = CvtTkStorageClass(begin.sc);
    location.mem_type = location.storage_class == STORAGE_REGISTER ? MEM_REGISTER : MEM_DATA;
    location.value = begin.addr;
    Trace(" LOCINFO: PC=<%x, %x> -> sc=%u, addr=%x\n", location.beg_address, location.end_address,
          uint32_t{location.storage_class}, location.value);
    return location;
}

// A last mark without its pair makes no location.
std::vector<LOCINFO> PairMarks(const std::vector<TkLoc>& marks) {
    const size_t first = FirstPair(marks);
    std::vector<LOCINFO> locations;
    locations.reserve((marks.size() - first) / 2);
    for (size_t i = first; i + 1 < marks.size(); i += 2)
        locations.push_back(MakeLocation(marks[i], marks[i + 1]));
    return locations;
}

}  // namespace

TkLoc ReadLifetimeMark(uint32_t idx) {
    TkLoc mark = {};
    mark.PC = ReadAsn(idx);
    mark.sc = ReadAsn(idx);
    mark.addr = ReadAsn(idx);
    const bool has_mem = ReadOptionalAsn(idx, mark.mem);
    Trace("Variable lifetime info: PC=%x, sc=%x, addr=%x", mark.PC, mark.sc, mark.addr);
    if (has_mem) Trace(", mem_type=%x", mark.mem);
    Trace("\n");
    return mark;
}

std::vector<LOCINFO> MakeLocations(std::vector<TkLoc>& marks, uint32_t& unterminated) {
    if (marks.empty()) return {};
    TraceMarks(0, marks);
    std::stable_sort(marks.begin(), marks.end(), CompareTkLoc);
    TraceMarks(1, marks);
    ResolveGroups(marks);
    if (marks.empty()) return {};
    AppendFakeEnd(marks, unterminated);
    Concatenate(marks);
    TraceMarks(2, marks);
    TraceBadInterleave(marks);
    return PairMarks(marks);
}

}  // namespace scan695
