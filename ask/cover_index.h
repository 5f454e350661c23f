// Which of many stretches, sorted by where they begin, is the last one that reaches over an
// address.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace scan695::ask {

// A tree of the largest ends: log(n) steps for each question, however the stretches overlap.
class CoverIndex {
  public:
    static constexpr size_t NONE = SIZE_MAX;

    // The address behind each stretch, in the order of the stretches.
    explicit CoverIndex(const std::vector<uint64_t>& ends)
        : leaves_(std::bit_ceil(std::max<size_t>(ends.size(), 1))), ends_(2 * leaves_) {
        std::copy(ends.begin(), ends.end(), ends_.begin() + static_cast<ptrdiff_t>(leaves_));
        for (size_t i = leaves_ - 1; i > 0; --i)
            ends_[i] = std::max(ends_[2 * i], ends_[2 * i + 1]);
    }

    // The last stretch below `limit` that ends behind the address, NONE without one. `limit` is the
    // number of the stretches that do not begin behind it.
    size_t Last(size_t limit, uint64_t address) const {
        if (limit == 0) return NONE;
        size_t node = leaves_ + limit - 1;
        while (ends_[node] <= address) {
            while (node % 2 == 0) node /= 2;  // up, until there is something to the left
            if (node == 1) return NONE;
            --node;
        }
        while (node < leaves_) node = 2 * node + (ends_[2 * node + 1] > address ? 1 : 0);
        return node - leaves_;
    }

  private:
    size_t leaves_;
    std::vector<uint64_t> ends_;  // 1 is the root
};

}  // namespace scan695::ask
