#include "elf/image.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace scan695::elf {

namespace {

constexpr uint64_t ADDRESS_SPACE = uint64_t{1} << 32;

struct Part {
    uint64_t end;     // of its addresses
    uint64_t offset;  // of its first byte in the file
};

// The parts of one memory by their first addresses, without overlaps.
class Memory {
  public:
    void Lay(uint64_t begin, uint64_t end, uint64_t offset) {
        Clear(begin, end);
        parts_[begin] = {end, offset};
    }
    const std::map<uint64_t, Part>& parts() const { return parts_; }

  private:
    void Clear(uint64_t begin, uint64_t end) {
        auto at = parts_.lower_bound(begin);
        if (at != parts_.begin()) {
            Part& before = std::prev(at)->second;
            const uint64_t first = std::prev(at)->first;
            if (before.end > end) parts_[end] = {before.end, before.offset + (end - first)};
            before.end = std::min(before.end, begin);
        }
        while (at != parts_.end() && at->first < end) {
            const auto [first, part] = *at;
            at = parts_.erase(at);
            if (part.end > end) parts_[end] = {part.end, part.offset + (end - first)};
        }
    }

    std::map<uint64_t, Part> parts_;
};

void AppendStretches(const Memory& memory, uint8_t mem_type, std::vector<Stretch>& stretches) {
    uint64_t end = ADDRESS_SPACE + 1;
    for (const auto& [begin, part] : memory.parts()) {
        if (begin != end) stretches.push_back({static_cast<uint32_t>(begin), 0, mem_type, {}});
        Stretch& stretch = stretches.back();
        stretch.pieces.push_back({part.offset, part.end - begin});
        stretch.size += part.end - begin;
        end = part.end;
    }
}

}  // namespace

std::vector<Stretch> BuildImage(const inspector::Fst& fst) {
    std::map<uint8_t, Memory> memories;
    for (const inspector::CodeBlock& block : fst.code) {
        if (block.head.length == 0) continue;
        Memory& memory = memories[block.head.mem_type];
        const uint64_t begin = block.head.address;
        const uint64_t end = begin + block.head.length;
        memory.Lay(begin, std::min(end, ADDRESS_SPACE), block.body);
        if (end > ADDRESS_SPACE)
            memory.Lay(0, end - ADDRESS_SPACE, block.body + (ADDRESS_SPACE - begin));
    }
    std::vector<Stretch> stretches;
    for (const auto& [mem_type, memory] : memories) AppendStretches(memory, mem_type, stretches);
    std::stable_sort(stretches.begin(), stretches.end(), [](const Stretch& a, const Stretch& b) {
        return std::tie(a.address, a.memory) < std::tie(b.address, b.memory);
    });
    return stretches;
}

}  // namespace scan695::elf
