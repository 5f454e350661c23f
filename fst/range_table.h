// The table of stretches of code memory, each owned by one module, as it grows: entries are found
// by number and inserted and removed anywhere. It is kept in pages, so that a change in the middle
// moves the entries of one page and no others.
//
// Entries are ascending by their address and do not overlap as long as the table is `Ordered`, so
// that the entry of an address is found by addresses alone. Two things are peculiar:
//
// - An entry can be empty: a stretch that overrules an entry from its first or up to its last byte
//   cuts it down to a length of 0, and it stays in the table, where it can still fuse with a
//   neighbour of its module. It contains no address. What is left of it begins where the stretch
//   that cut it, or the entry behind that, begins, and it stands in front of it. So of several
//   entries at one address only the last one can contain it, and that is the one that a search for
//   the last entry at or below an address ends at.
// - A stretch that passes the end of the address space wraps: it ends below its beginning, or at 0.
//   Once one has come, entries may overlap, contain addresses below their own, or stand in any
//   order, and order is given up for good. Which entry an address then belongs to follows from the
//   very steps of a binary search over the entry numbers, and from nothing else.
#pragma once

#include <cstdint>
#include <vector>

#include "store/records.h"

namespace scan695 {

class RangeTable {
  public:
    static constexpr int32_t PAGE_ENTRIES = 512;

    int32_t Count() const { return count_; }
    bool Ordered() const { return ordered_; }
    void GiveUpOrder() { ordered_ = false; }
    // How many entries of an ordered table, which has some, begin at or below the address.
    int32_t CountUpTo(uint32_t address);
    // A number from 0 to Count() - 1. The reference is valid until the next change of the table.
    RANGEINFO& operator[](int32_t number);
    // Puts an entry at a number from 0 to Count(); the entries from there on move up by one.
    void Insert(int32_t number, const RANGEINFO& entry);
    // Takes the entries from `first` to `last` out; nothing when first is above last.
    void Remove(int32_t first, int32_t last);

  private:
    using Page = std::vector<RANGEINFO>;

    int32_t FindPage(int32_t number);
    void SplitPage(int32_t at);
    void RemoveEmptyPages(int32_t first, int32_t end);
    void AddToFirsts(int32_t page, int32_t summand);

    std::vector<Page> pages_;      // none of them empty
    std::vector<int32_t> firsts_;  // number of the first entry of each page
    int32_t last_page_ = 0;        // where the last look-up ended: the next one is often near
    int32_t count_ = 0;
    bool ordered_ = true;
};

// Entry numbers around an address, -1 for none.
struct FoundRanges {
    int32_t containing;  // the entry that contains the address
    int32_t below;       // the nearest one that lies wholly below it
    int32_t above;       // the nearest one that lies wholly above it
};
// Where the table is not ordered, the result follows from the steps of a binary search.
FoundRanges FindRange(RangeTable& table, uint32_t address);

}  // namespace scan695
