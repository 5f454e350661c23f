// Numbers grouped by a key, in ascending order within their group.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace scan695::dwarf {

class Groups {
  public:
    Groups() = default;

    // Number i belongs to group keys[i], which is below `count`.
    Groups(const std::vector<uint32_t>& keys, size_t count)
        : starts_(count + 1), numbers_(keys.size()) {
        for (const uint32_t key : keys) ++starts_[key + 1];
        for (size_t i = 0; i < count; ++i) starts_[i + 1] += starts_[i];
        std::vector<uint32_t> next = starts_;
        for (size_t i = 0; i < keys.size(); ++i) {
            numbers_[next[keys[i]]++] = static_cast<uint32_t>(i);
        }
    }

    std::span<const uint32_t> operator[](size_t key) const {
        return {numbers_.data() + starts_[key], starts_[key + 1] - starts_[key]};
    }

  private:
    std::vector<uint32_t> starts_;
    std::vector<uint32_t> numbers_;
};

}  // namespace scan695::dwarf
