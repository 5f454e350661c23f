#include "fst/code_merger.h"

#include <algorithm>

#include "report/report.h"

namespace scan695 {

// A piece joins the block that ends where the piece starts, in the same memory, unless it starts in
// another page of 64 KB than the block.
bool CodeMerger::Joins(const CODEINFO& piece) const {
    return current_.address + current_.length == piece.address &&
           current_.address >> 16 == piece.address >> 16 && current_.mem_type == piece.mem_type;
}

void CodeMerger::WriteHead() {
    if (output_.Write(&current_, sizeof current_) == 0) ReportAndStop(ERROR_NO_MEMORY);
}

// Keeps a place for the head, whose length is not final yet.
void CodeMerger::Open(const CODEINFO& piece) {
    current_ = piece;
    head_position_ = output_.Position();
    WriteHead();
    ++count_;
}

void CodeMerger::CompleteHead() {
    if (current_.mem_type == NO_BLOCK) return;
    if (output_.Seek(head_position_, ChunkFile::FROM_START) == 0) ReportAndStop(ERROR_NO_MEMORY);
    WriteHead();
    if (output_.Seek(0, ChunkFile::FROM_END) == 0) ReportAndStop(ERROR_NO_MEMORY);
}

void CodeMerger::CopyBytes(ChunkFile& input, uint32_t length) {
    uint8_t buffer[1024] = {};
    while (length > 0) {
        const uint32_t piece = std::min<uint32_t>(length, sizeof buffer);
        if (input.Read(buffer, static_cast<int32_t>(piece)) == 0)
            ReportAndStop(ERROR_READ_TEMPORARY);
        if (output_.Write(buffer, static_cast<int32_t>(piece)) == 0) ReportAndStop(ERROR_NO_MEMORY);
        length -= piece;
    }
}

void CodeMerger::Add(const CODEINFO& piece, ChunkFile& input) {
    if (Joins(piece)) {
        current_.length += piece.length;
    } else {
        CompleteHead();
        Open(piece);
    }
    CopyBytes(input, piece.length);
}

uint32_t CodeMerger::Finish() {
    CompleteHead();
    return count_;
}

}  // namespace scan695
