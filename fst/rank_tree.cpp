#include "fst/rank_tree.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <new>
#include <utility>

namespace scan695 {

bool RankTree::Allocate(int32_t count) {
    leaves_ = static_cast<int32_t>(std::bit_ceil(static_cast<uint32_t>(count)));
    nodes_.reset(new (std::nothrow) Node[2 * static_cast<size_t>(leaves_)]);
    if (nodes_ == nullptr) return false;
    std::fill_n(nodes_.get() + leaves_ + count, leaves_ - count, Node{UINT32_MAX, 0});
    return true;
}

RankTree::Node RankTree::Joined(int32_t parent) const {
    const Node* children = &nodes_[std::ptrdiff_t{2} * parent];
    const Node& left = children[0];
    const Node& right = children[1];
    return {std::min(left.lowest, right.lowest), std::max(left.highest, right.highest)};
}

void RankTree::Build() {
    for (int32_t node = leaves_ - 1; node > 0; --node) nodes_[node] = Joined(node);
}

// Climbs over subtrees without an answer, then descends into the first one that has it.
int32_t RankTree::NextNotBelow(int32_t place, uint32_t rank) const {
    int32_t node = leaves_ + place;
    while (nodes_[node].highest < rank) {
        while (node % 2 == 1) node /= 2;
        ++node;
    }
    while (node < leaves_) {
        node *= 2;
        if (nodes_[node].highest < rank) ++node;
    }
    return node - leaves_;
}

int32_t RankTree::PreviousNotAbove(int32_t place, uint32_t rank) const {
    int32_t node = leaves_ + place;
    while (nodes_[node].lowest > rank) {
        while (node % 2 == 0) node /= 2;
        --node;
    }
    while (node < leaves_) {
        node = 2 * node + 1;
        if (nodes_[node].lowest > rank) --node;
    }
    return node - leaves_;
}

void RankTree::UpdateAbove(int32_t place) {
    for (int32_t node = (leaves_ + place) / 2; node > 0; node /= 2) {
        const Node joined = Joined(node);
        if (joined.lowest == nodes_[node].lowest && joined.highest == nodes_[node].highest) return;
        nodes_[node] = joined;
    }
}

void RankTree::Swap(int32_t a, int32_t b) {
    if (Rank(a) == Rank(b)) return;
    std::swap(At(a), At(b));
    UpdateAbove(a);
    UpdateAbove(b);
}

}  // namespace scan695
