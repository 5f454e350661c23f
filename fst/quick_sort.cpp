// Quicksort around the middle entry is fast on the usual input but quadratic on some, organ pipes
// for one, and another sort would leave records with equal keys in another order. So the same steps
// run on two kinds of cells:
//
// - IndexCells look at the records through the callback. That is all that most sorts need.
// - RankedCells take over the parts that are left when the work passes its budget. Each entry has
//   the rank of its key, and a tree over the ranks gives the next entry that a scan would stop at
//   without visiting those between. A partition then costs as many steps as it swaps, which is at
//   most the size of its smaller part, so the whole stays near n log n.
#include "fst/quick_sort.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <new>
#include <numeric>
#include <utility>

#include "fst/rank_tree.h"
#include "report/report.h"

namespace scan695 {

namespace {

// The steps of the sort. Parts are independent of one another, so the smaller one goes first, which
// bounds the recursion.
template <class Cells>
void SortParts(Cells& cells, int32_t low, int32_t high) {
    while (low < high) {
        if (cells.SortOtherwise(low, high)) return;
        ProgressTick();
        int32_t i = low;
        int32_t j = high;
        const uint32_t pivot = cells.Key(low + (high - low) / 2);
        while (i <= j) {
            i = cells.NextNotBelow(i, pivot);
            j = cells.PreviousNotAbove(j, pivot);
            if (i <= j) cells.Swap(i++, j--);
        }
        if (j - low < high - i) {
            SortParts(cells, low, j);
            low = i;
        } else {
            SortParts(cells, i, high);
            high = j;
        }
    }
}

class RankedCells {
  public:
    // `index` is the entry of place 0 of the ranks.
    RankedCells(uint32_t* index, RankTree& ranks) : index_(index), ranks_(ranks) {}

    static bool SortOtherwise(int32_t, int32_t) { return false; }
    uint32_t Key(int32_t place) const { return ranks_.Rank(place); }
    int32_t NextNotBelow(int32_t place, uint32_t rank) const {
        return ranks_.NextNotBelow(place, rank);
    }
    int32_t PreviousNotAbove(int32_t place, uint32_t rank) const {
        return ranks_.PreviousNotAbove(place, rank);
    }
    void Swap(int32_t a, int32_t b) {
        std::swap(index_[a], index_[b]);
        ranks_.Swap(a, b);
    }

  private:
    uint32_t* index_;
    RankTree& ranks_;
};

// Gives each of `count` entries its rank in the tree. False when there is no memory.
bool RankEntries(const uint32_t* index, int32_t count, CompareFunction compare, RankTree& ranks) {
    const auto size = static_cast<size_t>(count);
    const std::unique_ptr<int32_t[]> places(new (std::nothrow) int32_t[size]);
    if (places == nullptr || !ranks.Allocate(count)) return false;
    int32_t* const sorted = places.get();
    std::iota(sorted, sorted + count, 0);
    std::sort(sorted, sorted + count, [=](int32_t a, int32_t b) {
        ProgressTick();
        return compare(index[a], index[b]) < 0;
    });
    uint32_t rank = 0;
    for (int32_t i = 0; i < count; ++i) {
        if (i > 0 && compare(index[sorted[i - 1]], index[sorted[i]]) != 0) ++rank;
        ranks.SetRank(sorted[i], rank);
    }
    ranks.Build();
    return true;
}

class IndexCells {
  public:
    IndexCells(std::span<uint32_t> index, CompareFunction compare)
        : index_(index.data()),
          compare_(compare),
          budget_(static_cast<int64_t>(3 * index.size() *
                                       static_cast<size_t>(std::bit_width(index.size())))) {}

    // Called for each partition: true when the part has been sorted by ranks.
    bool SortOtherwise(int32_t low, int32_t high) {
        const int32_t count = high - low + 1;
        budget_ -= count;
        if (budget_ >= 0 || count < SMALL_PART) return false;
        RankTree ranks;
        if (!RankEntries(index_ + low, count, compare_, ranks)) return false;
        RankedCells cells(index_ + low, ranks);
        SortParts(cells, 0, count - 1);
        return true;
    }
    uint32_t Key(int32_t entry) const { return index_[entry]; }
    int32_t NextNotBelow(int32_t entry, uint32_t record) const {
        while (compare_(index_[entry], record) < 0) ++entry;
        return entry;
    }
    int32_t PreviousNotAbove(int32_t entry, uint32_t record) const {
        while (compare_(index_[entry], record) > 0) --entry;
        return entry;
    }
    void Swap(int32_t a, int32_t b) { std::swap(index_[a], index_[b]); }

  private:
    static constexpr int32_t SMALL_PART = 64;  // below it, even quadratic work is little

    uint32_t* index_;
    CompareFunction compare_;
    int64_t budget_;
};

}  // namespace

void QuickSortIndex(std::span<uint32_t> index, CompareFunction compare) {
    IndexCells cells(index, compare);
    SortParts(cells, 0, static_cast<int32_t>(index.size()) - 1);
}

}  // namespace scan695
