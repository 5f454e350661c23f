#include "scopes/function_map.h"

#include <algorithm>
#include <iterator>

#include "store/tables.h"

namespace scan695 {

void FunctionMap::Update() {
    for (; nof_blocks_ < Store.Header.nof_blocks; ++nof_blocks_) {
        BLOCKINFO block = {};
        ReadRecord(Store.BlockTable, nof_blocks_, block);
        if (block.is_function != 0) Add(block, static_cast<int32_t>(nof_blocks_));
    }
}

int32_t FunctionMap::Find(uint32_t address) const {
    auto piece = pieces_.upper_bound(address);
    if (piece == pieces_.begin()) return -1;
    --piece;
    return address < piece->second.end ? piece->second.block : -1;
}

// A block whose end wraps to an address below its start holds no address.
void FunctionMap::Add(const BLOCKINFO& block, int32_t number) {
    const uint32_t begin = block.address;
    const uint32_t end = block.address + block.size;
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
