// The table of stretches of code memory, each owned by one module, as it grows: entries are found
// by number and inserted and removed anywhere. It is kept in pages, so that a change in the middle
// moves the entries of one page and no others.
//
// Entries are ascending and do not overlap as long as the table is `Ordered`; one that has shrunk
// to nothing stands in front of the one that begins at its address. Where an address wraps, the
// table holds what was put into it, in the order of the entry numbers.
#pragma once

#include <cstdint>

#include "store/records.h"

namespace scan695 {

class RangeTable {
  public:
    static constexpr int32_t PAGE_ENTRIES = 512;

    RangeTable() = default;
    ~RangeTable() { Free(); }
    RangeTable(const RangeTable&) = delete;
    RangeTable& operator=(const RangeTable&) = delete;

    // Makes an empty table with its first page; false when there is no memory.
    bool Allocate();
    void Free();

    int32_t Count() const { return count_; }
    bool Ordered() const { return ordered_; }
    void GiveUpOrder() { ordered_ = false; }
    // How many entries of an ordered table begin at or below the address.
    int32_t CountUpTo(uint32_t address);
    // A number from 0 to Count() - 1. The reference is valid until the next change of the table.
    RANGEINFO& operator[](int32_t number);
    // Puts an entry at a number from 0 to Count(); the entries from there on move up by one. False,
    // and nothing done, when there is no memory.
    bool Insert(int32_t number, const RANGEINFO& entry);
    // Takes the entries from `first` to `last` out; nothing when first is above last.
    void Remove(int32_t first, int32_t last);

  private:
    struct Page {
        int32_t count;
        RANGEINFO entries[PAGE_ENTRIES];
    };
    int32_t FindPage(int32_t number);
    bool GrowArrays();
    bool InsertPage(int32_t at);
    void RemovePages(int32_t first, int32_t count);
    bool SplitPage(int32_t at);
    void RemoveEmptyPages(int32_t first, int32_t end);

    Page** pages_ = nullptr;
    int32_t* firsts_ = nullptr;  // number of the first entry of each page
    int32_t page_count_ = 0;
    int32_t page_capacity_ = 0;
    int32_t last_page_ = 0;  // where the last look-up ended: the next one is often near
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
