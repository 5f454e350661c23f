// Ranks of entries in a row, with a tree over them that finds the next entry of at least, or of at
// most, a given rank in logarithmic time.
#pragma once

#include <cstdint>
#include <memory>

namespace scan695 {

class RankTree {
  public:
    // Room for `count` entries; false when there is no memory.
    [[nodiscard]] bool Allocate(int32_t count);
    // Give every place its rank, then build the tree once.
    void SetRank(int32_t place, uint32_t rank) { At(place) = {rank, rank}; }
    void Build();

    uint32_t Rank(int32_t place) const { return nodes_.get()[leaves_ + place].lowest; }
    // The first place at or behind `place` with a rank of at least `rank`, and the last one at or
    // before it with a rank of at most `rank`. There must be one.
    int32_t NextNotBelow(int32_t place, uint32_t rank) const;
    int32_t PreviousNotAbove(int32_t place, uint32_t rank) const;
    void Swap(int32_t a, int32_t b);

  private:
    // Of all places below the node. A place without entry is no answer to any search.
    struct Node {
        uint32_t lowest;
        uint32_t highest;
    };
    Node& At(int32_t place) { return nodes_.get()[leaves_ + place]; }
    Node Joined(int32_t parent) const;
    void UpdateAbove(int32_t place);

    std::unique_ptr<Node[]> nodes_;  // node 1 is the root, 2n and 2n + 1 are the children of n
    int32_t leaves_ = 0;             // a power of 2; the leaves are the nodes from there on
};

}  // namespace scan695
