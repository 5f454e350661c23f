// Which function block an address lies in: the first one whose stretch of addresses holds it. Later
// blocks get only what the earlier ones have left.
//
// The blocks are kept in layers, each of which knows for its own blocks, in the order of their
// addresses, which piece belongs to which. Blocks that come between two questions make a new layer,
// together with those layers in front that have no more blocks than it has: so there are few of
// them, and no block goes from layer to layer often.
#pragma once

#include <cstdint>
#include <vector>

#include "store/tables.h"

namespace scan695 {

class FunctionMap {
  public:
    // The next block of the program, of which nothing is known yet.
    void AddBlock();
    // Tells that block `number` is a function and where it lies.
    void SetSpan(uint32_t number, uint32_t address, uint32_t size);

    // The block's number; -1 for an address outside all functions. No block is open.
    int32_t Find(uint32_t address);
    // The address of a function.
    uint32_t AddressOf(uint32_t number) const { return SpanOf(number).address; }

  private:
    struct Span {
        uint32_t address;
        uint32_t size;  // 0 for a block that is no function

        uint32_t End() const { return address + size; }
    };
    struct Piece {
        uint32_t begin;
        uint32_t end;  // the address behind it
        uint32_t block;
    };
    struct Layer {
        uint32_t first;  // number of the first block; the last one is that in front of the next
        std::vector<Piece> pieces;  // they do not overlap
    };

    Span SpanOf(uint32_t number) const;
    void TakeIn();
    std::vector<uint32_t> ByAddress(uint32_t first, uint32_t end) const;
    std::vector<Piece> PiecesOf(uint32_t first, uint32_t end) const;

    std::vector<Layer> layers_;
    ChunkFile spans_;  // by block number; with DebugMode the BlockTable has them
    uint32_t nof_blocks_ = 0;
    uint32_t nof_taken_ = 0;
};

}  // namespace scan695
