#include "fst/range_table.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>

namespace scan695 {

namespace {

template <class Item>
void MoveItems(Item* to, const Item* from, int32_t count) {
    if (to < from)
        std::copy(from, from + count, to);
    else
        std::copy_backward(from, from + count, to + count);
}

template <class Item>
bool Reallocate(Item*& items, int32_t count) {
    // An item may be a pointer. NOLINTNEXTLINE(bugprone-sizeof-expression)
    void* memory = std::realloc(items, sizeof(Item) * static_cast<size_t>(count));
    if (memory == nullptr) return false;
    items = static_cast<Item*>(memory);
    return true;
}

void AddToAll(int32_t* numbers, int32_t count, int32_t summand) {
    for (int32_t i = 0; i < count; ++i) numbers[i] += summand;
}

}  // namespace

bool RangeTable::Allocate() {
    Free();
    return InsertPage(0);
}

void RangeTable::Free() {
    RemovePages(0, page_count_);
    std::free(pages_);
    std::free(firsts_);
    pages_ = nullptr;
    firsts_ = nullptr;
    page_capacity_ = 0;
    count_ = 0;
    ordered_ = true;
}

// The last page that begins at or before the number.
int32_t RangeTable::FindPage(int32_t number) {
    const int32_t in_last = number - firsts_[last_page_];
    if (in_last >= 0 && in_last < pages_[last_page_]->count) return last_page_;
    const int32_t* behind = std::upper_bound(firsts_ + 1, firsts_ + page_count_, number);
    last_page_ = static_cast<int32_t>(behind - firsts_) - 1;
    return last_page_;
}

RANGEINFO& RangeTable::operator[](int32_t number) {
    const int32_t at = FindPage(number);
    return pages_[at]->entries[number - firsts_[at]];
}

bool RangeTable::GrowArrays() {
    const int32_t capacity = page_capacity_ + 64;
    if (!Reallocate(pages_, capacity) || !Reallocate(firsts_, capacity)) return false;
    page_capacity_ = capacity;
    return true;
}

// Opens an empty page; the caller gives it its first number.
bool RangeTable::InsertPage(int32_t at) {
    if (page_count_ == page_capacity_ && !GrowArrays()) return false;
    assert(pages_ != nullptr && firsts_ != nullptr);
    auto* page = static_cast<Page*>(std::calloc(1, sizeof(Page)));
    if (page == nullptr) return false;
    MoveItems(pages_ + at + 1, pages_ + at, page_count_ - at);
    MoveItems(firsts_ + at + 1, firsts_ + at, page_count_ - at);
    pages_[at] = page;
    firsts_[at] = 0;
    ++page_count_;
    return true;
}

void RangeTable::RemovePages(int32_t first, int32_t count) {
    last_page_ = 0;
    if (count == 0) return;
    for (int32_t i = first; i < first + count; ++i) std::free(pages_[i]);
    page_count_ -= count;
    MoveItems(pages_ + first, pages_ + first + count, page_count_ - first);
    MoveItems(firsts_ + first, firsts_ + first + count, page_count_ - first);
}

bool RangeTable::SplitPage(int32_t at) {
    if (!InsertPage(at + 1)) return false;
    Page& left = *pages_[at];
    Page& right = *pages_[at + 1];
    right.count = left.count / 2;
    left.count -= right.count;
    MoveItems(right.entries, left.entries + left.count, right.count);
    firsts_[at + 1] = firsts_[at] + left.count;
    return true;
}

bool RangeTable::Insert(int32_t number, const RANGEINFO& entry) {
    int32_t at = FindPage(number);
    if (pages_[at]->count == PAGE_ENTRIES) {
        if (!SplitPage(at)) return false;
        if (number > firsts_[at + 1]) ++at;
    }
    Page& page = *pages_[at];
    const int32_t place = number - firsts_[at];
    MoveItems(page.entries + place + 1, page.entries + place, page.count - place);
    page.entries[place] = entry;
    ++page.count;
    ++count_;
    AddToAll(firsts_ + at + 1, page_count_ - at - 1, 1);
    return true;
}

void RangeTable::Remove(int32_t first, int32_t last) {
    if (first > last) return;
    const int32_t removed = last - first + 1;
    const int32_t at = FindPage(first);
    int32_t place = first - firsts_[at];
    int32_t next = at;
    for (int32_t rest = removed; rest > 0; ++next, place = 0) {
        Page& page = *pages_[next];
        const int32_t piece = std::min(rest, page.count - place);
        page.count -= piece;
        MoveItems(page.entries + place, page.entries + place + piece, page.count - place);
        rest -= piece;
    }
    count_ -= removed;
    for (int32_t i = at + 1; i < next; ++i) firsts_[i] = first;
    AddToAll(firsts_ + next, page_count_ - next, -removed);
    RemoveEmptyPages(at, next);
}

// Among the pages from `first` up to `end`, of which only the outer two can hold entries.
void RangeTable::RemoveEmptyPages(int32_t first, int32_t end) {
    if (pages_[end - 1]->count > 0) --end;
    if (first < end && pages_[first]->count > 0) ++first;
    if (first == 0 && end == page_count_) ++first;  // a table never loses its last page
    RemovePages(first, std::max(end - first, 0));
}

int32_t RangeTable::CountUpTo(uint32_t address) {
    const auto begins_behind = [](uint32_t place, const Page* page) {
        return place < page->entries[0].address;
    };
    Page** const behind =
        std::upper_bound(pages_ + 1, pages_ + page_count_, address, begins_behind);
    last_page_ = static_cast<int32_t>(behind - pages_) - 1;
    const Page& page = *pages_[last_page_];
    const RANGEINFO* const end = std::upper_bound(
        page.entries, page.entries + page.count, address,
        [](uint32_t place, const RANGEINFO& entry) { return place < entry.address; });
    return firsts_[last_page_] + static_cast<int32_t>(end - page.entries);
}

namespace {

FoundRanges FindByOrder(RangeTable& table, uint32_t address) {
    const int32_t above = table.CountUpTo(address);
    const int32_t behind = above < table.Count() ? above : -1;
    if (above == 0) return {-1, -1, behind};
    const RANGEINFO& entry = table[above - 1];
    if (address - entry.address < entry.length) return {above - 1, above - 2, behind};
    return {-1, above - 1, behind};
}

}  // namespace

FoundRanges FindRange(RangeTable& table, uint32_t address) {
    if (table.Ordered()) return FindByOrder(table, address);
    int32_t lo = 0;
    int32_t hi = table.Count() - 1;
    int32_t containing = -1;
    while (lo <= hi) {
        const int32_t mid = lo + (hi - lo) / 2;
        const RANGEINFO& entry = table[mid];
        if (address < entry.address) {
            hi = mid - 1;
        } else if (address >= entry.address + entry.length) {
            lo = mid + 1;
        } else {
            containing = mid;
            hi = mid - 1;
            lo = mid + 1;
        }
    }
    return {containing, hi, lo < table.Count() ? lo : -1};
}

}  // namespace scan695
