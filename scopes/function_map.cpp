#include "scopes/function_map.h"

#include <algorithm>
#include <functional>
#include <queue>

#include "report/report.h"

namespace scan695 {

void FunctionMap::AddBlock() {
    if (Report.DebugMode == 0) AppendRecord(spans_, Span{});
    ++nof_blocks_;
}

void FunctionMap::SetSpan(uint32_t number, uint32_t address, uint32_t size) {
    if (Report.DebugMode == 0) WriteRecord(spans_, number, Span{address, size});
}

FunctionMap::Span FunctionMap::SpanOf(uint32_t number) const {
    if (Report.DebugMode != 0) {
        BLOCKINFO block = {};
        ReadRecord(Store.BlockTable, number, block);
        return {block.address, block.is_function != 0 ? block.size : 0};
    }
    Span span = {};
    ReadRecord(spans_, number, span);
    return span;
}

void FunctionMap::TakeIn() {
    const uint32_t end = nof_blocks_;
    if (nof_taken_ == end) return;
    uint32_t first = nof_taken_;
    while (!layers_.empty() && first - layers_.back().first <= end - first) {
        first = layers_.back().first;
        layers_.pop_back();
    }
    layers_.push_back({first, PiecesOf(first, end)});
    nof_taken_ = end;
}

// A block whose end wraps to an address below its start holds no address.
std::vector<uint32_t> FunctionMap::ByAddress(uint32_t first, uint32_t end) const {
    std::vector<uint32_t> numbers;
    numbers.reserve(end - first);
    for (uint32_t number = first; number < end; ++number)
        if (const Span span = SpanOf(number); span.End() > span.address) numbers.push_back(number);
    const auto address = [this](uint32_t number) { return AddressOf(number); };
    if (!std::ranges::is_sorted(numbers, {}, address)) std::ranges::sort(numbers, {}, address);
    return numbers;
}

// Goes up the addresses. Of the blocks that have begun, the first one has the piece up to its end
// or up to where the next block begins.
std::vector<FunctionMap::Piece> FunctionMap::PiecesOf(uint32_t first, uint32_t end) const {
    const std::vector<uint32_t> blocks = ByAddress(first, end);
    std::vector<Piece> pieces;
    pieces.reserve(blocks.size());
    std::priority_queue<uint32_t, std::vector<uint32_t>, std::greater<>> begun;
    size_t next = 0;
    uint32_t at = 0;
    for (;;) {
        while (!begun.empty() && SpanOf(begun.top()).End() <= at) begun.pop();
        if (begun.empty() && next == blocks.size()) return pieces;
        if (begun.empty()) at = AddressOf(blocks[next]);
        for (; next < blocks.size() && AddressOf(blocks[next]) == at; ++next)
            begun.push(blocks[next]);
        const uint32_t block = begun.top();
        uint32_t until = SpanOf(block).End();
        if (next < blocks.size()) until = std::min(until, AddressOf(blocks[next]));
        if (!pieces.empty() && pieces.back().block == block && pieces.back().end == at)
            pieces.back().end = until;
        else
            pieces.push_back({at, until, block});
        at = until;
    }
}

int32_t FunctionMap::Find(uint32_t address) {
    TakeIn();
    for (const Layer& layer : layers_) {
        const auto behind = std::ranges::upper_bound(layer.pieces, address, {}, &Piece::begin);
        if (behind == layer.pieces.begin()) continue;
        const Piece& piece = *(behind - 1);
        if (address < piece.end) return static_cast<int32_t>(piece.block);
    }
    return -1;
}

}  // namespace scan695
