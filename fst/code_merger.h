// Joins pieces of code that follow one another into blocks of a code file: the MergedCodeFile in
// the first pass over the code, the image in the second. A block is a CODEINFO and its bytes.
#pragma once

#include <cstdint>

#include "store/chunk_file.h"
#include "store/records.h"

namespace scan695 {

class CodeMerger {
  public:
    // Blocks are appended to the output.
    explicit CodeMerger(ChunkFile& output) : output_(output) { current_.mem_type = NO_BLOCK; }

    // Takes a piece whose bytes stand at an offset of `input`. A failure ends the run.
    void Add(const CODEINFO& piece, const ChunkFile& input, uint32_t offset);
    // Completes the last block and gives the number of blocks.
    uint32_t Finish();

  private:
    static constexpr uint8_t NO_BLOCK = 0xFF;  // no memory type

    bool Joins(const CODEINFO& piece) const;
    void Open(const CODEINFO& piece);
    void CompleteHead();

    ChunkFile& output_;
    CODEINFO current_ = {};
    uint32_t head_ = 0;  // where the head of the current block stands
    uint32_t count_ = 0;
};

}  // namespace scan695
