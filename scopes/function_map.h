// Which function block an address lies in: the first one of the BlockTable whose stretch of
// addresses holds it. Later blocks get only what the earlier ones have left.
#pragma once

#include <cstdint>
#include <map>

#include "store/records.h"

namespace scan695 {

class FunctionMap {
  public:
    // Takes in the blocks of the BlockTable that it does not hold yet; all of them are closed.
    void Update();
    // The block's index; -1 for an address outside all functions.
    int32_t Find(uint32_t address) const;

  private:
    struct Piece {
        uint32_t end;  // the address behind it
        int32_t block;
    };
    void Add(const BLOCKINFO& block, int32_t number);

    // What each block has got, by first address; pieces do not overlap.
    std::map<uint32_t, Piece> pieces_;
    // The same addresses without their blocks, neighbours merged: first address to the one behind.
    std::map<uint32_t, uint32_t> coverage_;
    uint32_t nof_blocks_ = 0;
};

}  // namespace scan695
