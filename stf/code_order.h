// The order in which the Code records take the chunks of all load records.
#pragma once

#include <compare>
#include <cstdint>
#include <queue>
#include <span>
#include <vector>

#include "stf/stf_state.h"

namespace scan695 {

// Chunks of one stretch that follow one another.
struct ChunkRow {
    uint32_t stretch;  // its index
    uint32_t first;    // index of the first chunk in the stretch
    uint32_t end;      // of the one behind the last
};

// Chunks that a stretch has.
uint32_t NofChunks(const CodeStretch& stretch);
// Where chunk `index` starts, in bytes from the start of the stretch; of the index behind the last
// one, the length of the stretch.
uint32_t ChunkStart(const CodeStretch& stretch, uint32_t index);

// Goes through the chunks of all stretches by memory, address and order of the input.
class CodeOrder {
  public:
    // The stretches, which get sorted, must stay.
    explicit CodeOrder(std::span<CodeStretch> stretches);

    // The next row, as long as the order allows; false at the end.
    bool Next(ChunkRow& row);

  private:
    // Where a chunk stands in the order.
    struct Place {
        int32_t mem_type;
        uint32_t address;
        uint32_t offset;  // rises with the order of the input
        auto operator<=>(const Place&) const = default;
    };
    struct Rest {
        Place place;
        ChunkRow row;
        bool operator>(const Rest& other) const { return place > other.place; }
    };

    Place PlaceOf(const ChunkRow& row) const;
    ChunkRow WholeOf(uint32_t stretch) const;
    ChunkRow Take();
    uint32_t EndBefore(const ChunkRow& row, const Place& other) const;
    uint32_t EndOf(const ChunkRow& row) const;

    std::span<CodeStretch> stretches_;
    uint32_t next_ = 0;  // the first stretch that has not been begun
    // What is left of the stretches that others have cut in on.
    std::priority_queue<Rest, std::vector<Rest>, std::greater<>> rests_;
};

}  // namespace scan695
