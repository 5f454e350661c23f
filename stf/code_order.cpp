#include "stf/code_order.h"

#include <algorithm>

#include "store/code_table.h"

namespace scan695 {

namespace {

uint32_t ChunksIn(uint32_t size) {
    return (size + MAX_CHUNK - 1) / MAX_CHUNK;
}

// How many chunks start less than `distance` bytes behind the start of the stretch.
uint32_t ChunksBefore(const CodeStretch& stretch, uint64_t distance) {
    const uint64_t count = distance / stretch.size * ChunksIn(stretch.size) +
                           ChunksIn(static_cast<uint32_t>(distance % stretch.size));
    return static_cast<uint32_t>(std::min<uint64_t>(count, NofChunks(stretch)));
}

}  // namespace

uint32_t NofChunks(const CodeStretch& stretch) {
    return ChunksIn(stretch.size) * stretch.repeats;
}

uint32_t ChunkStart(const CodeStretch& stretch, uint32_t index) {
    const uint32_t per_time = ChunksIn(stretch.size);
    return index / per_time * stretch.size + index % per_time * MAX_CHUNK;
}

CodeOrder::CodeOrder(std::span<CodeStretch> stretches) : stretches_(stretches) {
    const auto place = [](const CodeStretch& s) { return Place{s.mem_type, s.address, s.offset}; };
    if (!std::ranges::is_sorted(stretches_, {}, place)) std::ranges::sort(stretches_, {}, place);
}

CodeOrder::Place CodeOrder::PlaceOf(const ChunkRow& row) const {
    const CodeStretch& stretch = stretches_[row.stretch];
    return {stretch.mem_type, stretch.address + ChunkStart(stretch, row.first), stretch.offset};
}

ChunkRow CodeOrder::WholeOf(uint32_t stretch) const {
    return {stretch, 0, NofChunks(stretches_[stretch])};
}

// Takes the row that starts first, to its end whatever comes between.
ChunkRow CodeOrder::Take() {
    const bool has_next = next_ < stretches_.size();
    if (rests_.empty() || (has_next && PlaceOf(WholeOf(next_)) < rests_.top().place))
        return WholeOf(next_++);
    const ChunkRow row = rests_.top().row;
    rests_.pop();
    return row;
}

// Where the row has to end for a chunk elsewhere.
uint32_t CodeOrder::EndBefore(const ChunkRow& row, const Place& other) const {
    const CodeStretch& stretch = stretches_[row.stretch];
    if (stretch.mem_type != other.mem_type) return row.end;
    // Of two chunks at one address the earlier one of the input goes first.
    const uint64_t distance = uint64_t{other.address} - stretch.address;
    return ChunksBefore(stretch, distance + (stretch.offset < other.offset ? 1 : 0));
}

uint32_t CodeOrder::EndOf(const ChunkRow& row) const {
    uint32_t end = row.end;
    if (next_ < stretches_.size()) end = std::min(end, EndBefore(row, PlaceOf(WholeOf(next_))));
    if (!rests_.empty()) end = std::min(end, EndBefore(row, rests_.top().place));
    return end;
}

bool CodeOrder::Next(ChunkRow& row) {
    if (rests_.empty() && next_ == stretches_.size()) return false;
    row = Take();
    const ChunkRow rest = {row.stretch, EndOf(row), row.end};
    row.end = rest.first;
    if (rest.first != rest.end) rests_.push({PlaceOf(rest), rest});
    return true;
}

}  // namespace scan695
