#include "scopes/function_map.h"

#include <algorithm>
#include <iterator>

namespace scan695 {

void FunctionMap::TakeIn() {
    for (; nof_taken_ < spans_.Size() / sizeof(Span); ++nof_taken_) {
        Span span = {};
        ReadRecord(spans_, nof_taken_, span);
        Add(span, static_cast<int32_t>(nof_taken_));
    }
}

uint32_t FunctionMap::AddressOf(uint32_t number) const {
    Span span = {};
    ReadRecord(spans_, number, span);
    return span.address;
}

int32_t FunctionMap::Find(uint32_t address) {
    TakeIn();
    auto piece = pieces_.upper_bound(address);
    if (piece == pieces_.begin()) return -1;
    --piece;
    return address < piece->second.end ? piece->second.block : -1;
}

// A block whose end wraps to an address below its start holds no address.
void FunctionMap::Add(const Span& span, int32_t number) {
    const uint32_t begin = span.address;
    const uint32_t end = span.address + span.size;
    if (end <= begin) return;
    auto covered = coverage_.upper_bound(begin);
    if (covered != coverage_.begin() && std::prev(covered)->second >= begin) --covered;
    uint32_t free_from = begin;
    uint32_t merged_begin = begin;
    uint32_t merged_end = end;
    while (covered != coverage_.end() && covered->first <= end) {
        if (free_from < covered->first) pieces_[free_from] = {covered->first, number};
        free_from = std::max(free_from, covered->second);
        merged_begin = std::min(merged_begin, covered->first);
        merged_end = std::max(merged_end, covered->second);
        covered = coverage_.erase(covered);
    }
    if (free_from < end) pieces_[free_from] = {end, number};
    coverage_[merged_begin] = merged_end;
}

}  // namespace scan695
