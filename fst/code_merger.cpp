#include "fst/code_merger.h"

#include <algorithm>

#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

// A piece joins the block that ends where the piece starts, in the same memory, unless it starts in
// another page of 64 KB than the block.
bool CodeMerger::Joins(const CODEINFO& piece) const {
    return current_.address + current_.length == piece.address &&
           current_.address >> 16 == piece.address >> 16 && current_.mem_type == piece.mem_type;
}

// Keeps a place for the head, whose length is not final yet.
void CodeMerger::Open(const CODEINFO& piece) {
    current_ = piece;
    head_ = output_.Size();
    AppendRecord(output_, current_);
    ++count_;
}

void CodeMerger::CompleteHead() {
    if (current_.mem_type == NO_BLOCK) return;
    if (!output_.WriteAt(head_, &current_, sizeof current_)) ReportAndStop(ERROR_NO_MEMORY);
}

void CodeMerger::Add(const CODEINFO& piece, const ChunkFile& input, uint32_t offset) {
    if (Joins(piece)) {
        current_.length += piece.length;
    } else {
        CompleteHead();
        Open(piece);
    }
    uint8_t buffer[1024];
    for (uint32_t rest = piece.length; rest > 0;) {
        const uint32_t part = std::min<uint32_t>(rest, sizeof buffer);
        AppendRecordBytes(output_, input.View(offset, part, buffer), part);
        offset += part;
        rest -= part;
    }
}

uint32_t CodeMerger::Finish() {
    CompleteHead();
    return count_;
}

}  // namespace scan695
