#include "fst/range_table.h"

#include <algorithm>

namespace scan695 {

// The last page that begins at or before the number.
int32_t RangeTable::FindPage(int32_t number) {
    const auto size_of = [this](int32_t page) { return static_cast<int32_t>(pages_[page].size()); };
    const int32_t in_last = number - firsts_[last_page_];
    if (in_last >= 0 && in_last < size_of(last_page_)) return last_page_;
    const auto behind = std::upper_bound(firsts_.begin() + 1, firsts_.end(), number);
    last_page_ = static_cast<int32_t>(behind - firsts_.begin()) - 1;
    return last_page_;
}

RANGEINFO& RangeTable::operator[](int32_t number) {
    const int32_t at = FindPage(number);
    return pages_[at][number - firsts_[at]];
}

// Renumbers the pages from one on.
void RangeTable::AddToFirsts(int32_t page, int32_t summand) {
    for (auto first = firsts_.begin() + page; first != firsts_.end(); ++first) *first += summand;
}

void RangeTable::SplitPage(int32_t at) {
    Page& left = pages_[at];
    const auto middle = left.begin() + (PAGE_ENTRIES - PAGE_ENTRIES / 2);
    Page right(middle, left.end());
    left.erase(middle, left.end());
    firsts_.insert(firsts_.begin() + at + 1, firsts_[at] + static_cast<int32_t>(left.size()));
    pages_.insert(pages_.begin() + at + 1, std::move(right));
}

void RangeTable::Insert(int32_t number, const RANGEINFO& entry) {
    if (pages_.empty()) {
        pages_.emplace_back();
        firsts_.push_back(0);
    }
    int32_t at = FindPage(number);
    if (pages_[at].size() == PAGE_ENTRIES) {
        SplitPage(at);
        if (number > firsts_[at + 1]) ++at;
    }
    pages_[at].insert(pages_[at].begin() + (number - firsts_[at]), entry);
    AddToFirsts(at + 1, 1);
    ++count_;
}

void RangeTable::Remove(int32_t first, int32_t last) {
    if (first > last) return;
    const int32_t removed = last - first + 1;
    const int32_t at = FindPage(first);
    auto place = static_cast<size_t>(first - firsts_[at]);
    int32_t next = at;
    for (auto rest = static_cast<size_t>(removed); rest > 0; ++next, place = 0) {
        Page& page = pages_[next];
        const size_t piece = std::min(rest, page.size() - place);
        const auto begin = page.begin() + static_cast<std::ptrdiff_t>(place);
        page.erase(begin, begin + static_cast<std::ptrdiff_t>(piece));
        rest -= piece;
    }
    count_ -= removed;
    std::fill(firsts_.begin() + at + 1, firsts_.begin() + std::max(next, at + 1), first);
    AddToFirsts(next, -removed);
    RemoveEmptyPages(at, next);
}

// Among the pages from `first` up to `end`, of which only the outer two can hold entries.
void RangeTable::RemoveEmptyPages(int32_t first, int32_t end) {
    if (!pages_[end - 1].empty()) --end;
    if (first < end && !pages_[first].empty()) ++first;
    last_page_ = 0;
    if (first >= end) return;
    pages_.erase(pages_.begin() + first, pages_.begin() + end);
    firsts_.erase(firsts_.begin() + first, firsts_.begin() + end);
}

int32_t RangeTable::CountUpTo(uint32_t address) {
    const auto begins_behind = [](uint32_t place, const Page& page) {
        return place < page.front().address;
    };
    const auto behind = std::upper_bound(pages_.begin() + 1, pages_.end(), address, begins_behind);
    last_page_ = static_cast<int32_t>(behind - pages_.begin()) - 1;
    const Page& page = pages_[last_page_];
    const auto end = std::upper_bound(
        page.begin(), page.end(), address,
        [](uint32_t place, const RANGEINFO& entry) { return place < entry.address; });
    return firsts_[last_page_] + static_cast<int32_t>(end - page.begin());
}

namespace {

FoundRanges FindByOrder(RangeTable& table, uint32_t address) {
    if (table.Count() == 0) return {-1, -1, -1};
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
