#include "dwarf/stretches.h"

#include <algorithm>
#include <tuple>

namespace scan695::dwarf {

Stretch StretchOf(uint32_t address, uint32_t size) {
    return {address, std::min(uint64_t{address} + size, ADDRESS_SPACE)};
}

void Join(std::vector<Stretch>& stretches) {
    std::sort(stretches.begin(), stretches.end(), [](const Stretch& a, const Stretch& b) {
        return std::tie(a.begin, a.end) < std::tie(b.begin, b.end);
    });
    size_t kept = 0;
    for (const Stretch& stretch : stretches) {
        if (stretch.begin == stretch.end) continue;
        if (kept > 0 && stretch.begin <= stretches[kept - 1].end) {
            stretches[kept - 1].end = std::max(stretches[kept - 1].end, stretch.end);
        } else {
            stretches[kept++] = stretch;
        }
    }
    stretches.resize(kept);
}

std::vector<Stretch> Common(const std::vector<Stretch>& stretches,
                            const std::vector<Stretch>& within) {
    std::vector<Stretch> common;
    for (const Stretch& stretch : stretches) {
        auto at = std::partition_point(within.begin(), within.end(), [&](const Stretch& other) {
            return other.end <= stretch.begin;
        });
        for (; at != within.end() && at->begin < stretch.end; ++at)
            common.push_back({std::max(at->begin, stretch.begin), std::min(at->end, stretch.end)});
    }
    return common;
}

void AddCode(EntryWriter& writer, Bytes& ranges, const std::vector<Stretch>& stretches,
             uint32_t base) {
    if (stretches.empty()) return;
    const uint64_t begin = stretches[0].begin;
    const uint64_t size = stretches[0].end - begin;
    if (stretches.size() == 1 && size < ADDRESS_SPACE) {
        writer.Address(AT_LOW_PC, static_cast<uint32_t>(begin));
        writer.Size(AT_HIGH_PC, static_cast<uint32_t>(size));
        return;
    }
    writer.Offset(AT_RANGES, Size32(ranges));
    for (const Stretch& stretch : stretches) {
        // The end of the address space has no number in a list that counts from 0: there the last
        // byte is lost, and a stretch of that byte alone.
        const uint64_t end = std::min(stretch.end - base, ADDRESS_SPACE - 1);
        if (stretch.begin - base == end) continue;
        Put32(ranges, static_cast<uint32_t>(stretch.begin - base));
        Put32(ranges, static_cast<uint32_t>(end));
    }
    Put32(ranges, 0);
    Put32(ranges, 0);
}

}  // namespace scan695::dwarf
