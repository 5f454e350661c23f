// Which function block an address lies in: the first one whose stretch of addresses holds it. Later
// blocks get only what the earlier ones have left.
#pragma once

#include <cstdint>
#include <map>

#include "store/tables.h"

namespace scan695 {

class FunctionMap {
  public:
    // The next block of the program, of which nothing is known yet.
    void AddBlock() { AppendRecord(spans_, Span{}); }
    // Tells that block `number` is a function and where it lies.
    void SetSpan(uint32_t number, uint32_t address, uint32_t size) {
        WriteRecord(spans_, number, Span{address, size});
    }

    // The block's number; -1 for an address outside all functions. No block is open.
    int32_t Find(uint32_t address);
    // The address of a function.
    uint32_t AddressOf(uint32_t number) const;

  private:
    struct Span {
        uint32_t address;
        uint32_t size;  // 0 for a block that is no function
    };
    struct Piece {
        uint32_t end;  // the address behind it
        int32_t block;
    };
    void TakeIn();
    void Add(const Span& span, int32_t number);

    // What each block has got, by first address; pieces do not overlap.
    std::map<uint32_t, Piece> pieces_;
    // The same addresses without their blocks, neighbours merged: first address to the one behind.
    std::map<uint32_t, uint32_t> coverage_;
    ChunkFile spans_;  // by block number
    uint32_t nof_taken_ = 0;
};

}  // namespace scan695
