// The interval map behind the module range table: a later stretch overrules an earlier one where
// they overlap, and neighbouring stretches of one module fuse across gaps.
#pragma once

#include <algorithm>
#include <cstdint>

#include "fst/range_table.h"

namespace scan695 {

class RangeMap {
  public:
    // Enters `length` bytes from `start` on for a module. A module of -1 or a length of 0 adds
    // nothing.
    void AddRange(uint32_t start, uint32_t length, int32_t module);

    // Makes one entry of each run of neighbours of one module among the entries `low` to `high`,
    // with the run's first start and the end of its last entry; gaps inside the run close.
    void MergeNeighbours(int32_t low, int32_t high);

    RangeTable& Table() { return table_; }

  private:
    struct Stretch {
        uint32_t first;
        uint32_t last;
        uint32_t length;
        uint32_t module;
    };
    // The entries whose neighbourhood an operation has changed. Before it no two neighbours have
    // one module, so behind it only here can some have.
    struct Touched {
        int32_t low = INT32_MAX;
        int32_t high = -1;

        void Include(int32_t number) {
            low = std::min(low, number);
            high = std::max(high, number);
        }
    };

    void AddInsideEntry(int32_t number, const Stretch& stretch);
    void AddOutsideEntries(const Stretch& stretch, FoundRanges at_first, FoundRanges at_last);
    void AddIntoStartOf(int32_t b, const Stretch& stretch, int32_t p);
    void AddIntoEndOf(int32_t a, const Stretch& stretch, int32_t q);
    void AddBetween(int32_t a, int32_t b, const Stretch& stretch);
    void InsertRange(int32_t number, const RANGEINFO& entry);
    void InsertStretch(int32_t number, const Stretch& stretch);
    void RemoveRanges(int32_t first, int32_t last);

    RangeTable table_;
    Touched touched_;
};

}  // namespace scan695
