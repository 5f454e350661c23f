// Stretches of memory that do not overlap, each with its owner.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace scan695::ask {

struct Stretch {
    uint64_t begin;
    uint64_t end;  // behind the last byte
    size_t owner;
};

// Takes stretches sorted by where they begin. What a stretch has in common with those before it is
// theirs.
class Stretches {
  public:
    static constexpr size_t NOBODY = SIZE_MAX;

    void Add(uint64_t begin, uint64_t end, size_t owner) {
        begin = std::max(begin, end_);
        if (begin >= end) return;
        list_.push_back({begin, end, owner});
        end_ = end;
    }

    // Calls `use(begin, end, owner)` for the pieces of [begin, end), from left to right, with
    // NOBODY between the stretches.
    template <class Use>
    void Split(uint64_t begin, uint64_t end, Use use) const {
        auto at = std::upper_bound(
            list_.begin(), list_.end(), begin,
            [](uint64_t place, const Stretch& stretch) { return place < stretch.end; });
        for (; begin < end; ++at) {
            const bool is_last = at == list_.end() || at->begin >= end;
            const uint64_t next = is_last ? end : at->begin;
            if (begin < next) use(begin, next, NOBODY);
            if (is_last) return;
            begin = std::max(begin, at->begin);
            const uint64_t behind = std::min(end, at->end);
            use(begin, behind, at->owner);
            begin = behind;
        }
    }

    const std::vector<Stretch>& list() const { return list_; }

  private:
    std::vector<Stretch> list_;
    uint64_t end_ = 0;
};

}  // namespace scan695::ask
