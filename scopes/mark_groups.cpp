#include "scopes/mark_groups.h"

#include <set>
#include <span>
#include <utility>

#include "report/report.h"

namespace scan695 {

namespace {

constexpr uint32_t NOWHERE = 0xFFFFFFFF;

// Which marks stand where: the lowest position of a kind, or of a kind and address, without a
// search through the group.
class MarkPlaces {
  public:
    void Add(const TkLoc& mark, uint32_t position) {
        by_kind_.insert({mark.IsEnd(), position});
        by_addr_.insert({Key(mark.IsEnd(), mark.addr), position});
    }
    void Remove(const TkLoc& mark, uint32_t position) {
        by_kind_.erase({mark.IsEnd(), position});
        by_addr_.erase({Key(mark.IsEnd(), mark.addr), position});
    }
    uint32_t First(bool is_end) const { return FirstOf(by_kind_, is_end); }
    uint32_t First(bool is_end, uint32_t addr) const {
        return FirstOf(by_addr_, Key(is_end, addr));
    }
    // True when another mark of the kind and address stands behind the first one.
    bool HasTwin(bool is_end, uint32_t addr) const {
        auto place = by_addr_.lower_bound({Key(is_end, addr), 0});
        return place != by_addr_.end() && ++place != by_addr_.end() &&
               place->first == Key(is_end, addr);
    }

  private:
    using Places = std::set<std::pair<uint64_t, uint32_t>>;
    static uint64_t Key(bool is_end, uint32_t addr) { return uint64_t{is_end} << 32 | addr; }
    static uint32_t FirstOf(const Places& places, uint64_t key) {
        const auto place = places.lower_bound({key, 0});
        return place != places.end() && place->first == key ? place->second : NOWHERE;
    }

    Places by_kind_;
    Places by_addr_;
};

// The marks of one group, in which pairs are removed.
class MarkGroup {
  public:
    // `start` is the group's place in the whole list, for the trace.
    MarkGroup(std::span<const TkLoc> marks, size_t start)
        : marks_(marks),
          start_(start),
          alive_(marks.size(), 1),
          nof_alive_(marks.size()),
          removed_(marks.size() + 1, 0) {
        for (uint32_t i = 0; i < marks.size(); ++i) {
            places_.Add(marks[i], i);
            if (marks[i].IsEnd()) ++nof_ends_;
        }
    }

    void RemovePairs() {
        const size_t nof_begins = marks_.size() - nof_ends_;
        if (nof_begins == nof_ends_)
            RemoveMultipleBE();
        else
            RemoveSurplus(nof_begins < nof_ends_);
    }

    std::vector<TkLoc> Remaining() const {
        std::vector<TkLoc> remaining;
        for (size_t i = 0; i < marks_.size(); ++i)
            if (alive_[i] != 0) remaining.push_back(marks_[i]);
        return remaining;
    }

  private:
    // As many begins as ends: each end takes away the first begin at its place, down to two marks.
    void RemoveMultipleBE() {
        for (uint32_t a = 0; a < marks_.size() && nof_alive_ > 2; ++a) {
            if (!marks_[a].IsEnd()) continue;
            const uint32_t b = places_.First(false, marks_[a].addr);
            if (b == NOWHERE) continue;
            Trace(" removing multiple B-E pair(%d,%d): addr=%x\n", Place(b), Place(a),
                  marks_[b].PC);
            RemovePair(a, b);
        }
    }

    // Of the kind that is in surplus, each mark that stands twice takes away one of the other kind,
    // until one finds none.
    void RemoveSurplus(bool of_ends) {
        for (uint32_t a = 0; a < marks_.size(); ++a) {
            if (alive_[a] == 0 || marks_[a].IsEnd() != of_ends) continue;
            if (!places_.HasTwin(of_ends, marks_[a].addr)) continue;
            const uint32_t k = places_.First(!of_ends, marks_[a].addr);
            if (k == NOWHERE) return;
            Trace(" removing B-E pair(%d,%d): addr=%x\n", Place(a), Place(k), marks_[a].PC);
            RemovePair(a, k);
        }
    }

    void RemovePair(uint32_t a, uint32_t b) {
        for (const uint32_t i : {a, b}) {
            places_.Remove(marks_[i], i);
            alive_[i] = 0;
            for (size_t node = i + 1; node < removed_.size(); node += LowBit(node))
                ++removed_[node];
        }
        nof_alive_ -= 2;
    }

    // Where the mark stands in the whole list, removed ones left out.
    int32_t Place(uint32_t i) const {
        uint32_t before = 0;
        for (size_t node = i; node > 0; node -= LowBit(node)) before += removed_[node];
        return static_cast<int32_t>(start_ + i - before);
    }

    static size_t LowBit(size_t node) { return node & (~node + 1); }

    std::span<const TkLoc> marks_;
    size_t start_;
    std::vector<uint8_t> alive_;
    size_t nof_alive_;
    size_t nof_ends_ = 0;
    std::vector<uint32_t> removed_;  // binary indexed tree over the removed ones
    MarkPlaces places_;
};

// Brings, place by place from `start` on, the mark forward that should follow the one before: the
// first of the other kind at the same place, else the first of the other kind. At the very front
// there is none before, and the order stays.
void InterleaveTkLoc(std::vector<TkLoc>& marks, size_t start) {
    if (start == 0) return;
    MarkPlaces places;
    for (size_t p = start; p < marks.size(); ++p) places.Add(marks[p], static_cast<uint32_t>(p));
    for (auto p = static_cast<uint32_t>(start); p < marks.size(); ++p) {
        const TkLoc before = marks[p - 1];
        uint32_t found = places.First(!before.IsEnd(), before.addr);
        if (found == NOWHERE) found = places.First(!before.IsEnd());
        places.Remove(marks[p], p);
        if (found == NOWHERE || found == p) continue;
        places.Remove(marks[found], found);
        std::swap(marks[p], marks[found]);
        places.Add(marks[found], found);
    }
}

// A lone end and a lone begin at one place: the variable did not move.
bool IsSinglePair(const std::vector<TkLoc>& group) {
    return group.size() == 2 && group[0].IsEnd() != group[1].IsEnd() &&
           group[0].addr == group[1].addr;
}

// Appends what is left of a group of two marks and more.
void AppendGroup(std::vector<TkLoc>& done, std::span<const TkLoc> marks) {
    MarkGroup group(marks, done.size());
    group.RemovePairs();
    const std::vector<TkLoc> remaining = group.Remaining();
    if (IsSinglePair(remaining)) {
        Trace(" removing single B-E pair(%d): addr=%x\n", static_cast<int32_t>(done.size()),
              remaining[0].PC);
        return;
    }
    const size_t start = done.size();
    done.insert(done.end(), remaining.begin(), remaining.end());
    InterleaveTkLoc(done, start);
}

}  // namespace

void ResolveGroups(std::vector<TkLoc>& marks) {
    std::vector<TkLoc> done;
    done.reserve(marks.size());
    for (size_t begin = 0; begin < marks.size();) {
        size_t end = begin + 1;
        while (end < marks.size() && marks[end].PC == marks[begin].PC) ++end;
        if (end - begin == 1)
            done.push_back(marks[begin]);
        else
            AppendGroup(done, std::span<const TkLoc>(marks).subspan(begin, end - begin));
        begin = end;
    }
    marks = std::move(done);
}

}  // namespace scan695
