#include "dwarf/code_map.h"

#include <algorithm>
#include <tuple>

namespace scan695::dwarf {

namespace {

struct OwnedStretch {
    Stretch stretch;
    uint32_t unit;
};

std::vector<OwnedStretch> ReadRanges(const Program& program) {
    std::vector<OwnedStretch> ranges;
    for (uint64_t i = 0; i < inspector::UsableEntries(program.fst, inspector::RANGES); ++i) {
        const auto range = *inspector::ReadEntry<RANGEINFO>(program.fst, inspector::RANGES, i);
        const uint32_t unit = program.UnitOf(static_cast<int32_t>(range.module));
        ranges.push_back({StretchOf(range.address, range.length), unit - program.FirstUnit()});
    }
    std::stable_sort(ranges.begin(), ranges.end(),
                     [](const OwnedStretch& a, const OwnedStretch& b) {
                         return a.stretch.begin < b.stretch.begin;
                     });
    return ranges;
}

std::vector<OwnedStretch> ReadBlocks(const Program& program) {
    std::vector<OwnedStretch> blocks;
    for (const BLOCKINFO& block : program.blocks) {
        blocks.push_back({StretchOf(block.address, block.size),
                          program.UnitOf(block.module) - program.FirstUnit()});
    }
    return blocks;
}

std::vector<Row> ReadRows(const Program& program) {
    std::vector<Row> rows;
    for (uint64_t i = 0; i < inspector::UsableEntries(program.fst, inspector::LINES); ++i) {
        const auto line = *inspector::ReadEntry<LINEINFO>(program.fst, inspector::LINES, i);
        rows.push_back(
            {line.address, line.number, program.UnitOf(line.module) - program.FirstUnit(), 0});
    }
    std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
        return std::tie(a.address, a.line) < std::tie(b.address, b.line);
    });
    return rows;
}

// Walks through stretches with ascending addresses.
class Boundaries {
  public:
    explicit Boundaries(std::vector<Stretch> stretches) : stretches_(std::move(stretches)) {}

    void MoveTo(uint64_t address) {
        while (next_ < stretches_.size() && stretches_[next_].end <= address) ++next_;
        is_inside_ = next_ < stretches_.size() && stretches_[next_].begin <= address;
    }
    bool IsInside() const { return is_inside_; }
    // The first address behind the current one at which a stretch begins or ends.
    uint64_t Next() const {
        if (next_ == stretches_.size()) return ADDRESS_SPACE;
        return is_inside_ ? stretches_[next_].end : stretches_[next_].begin;
    }

  private:
    std::vector<Stretch> stretches_;
    size_t next_ = 0;
    bool is_inside_ = false;
};

// A line reaches up to the next one, but not beyond the range that it lies in; outside all ranges,
// not beyond the block, and not into any. The last line of all covers a single byte if it lies in
// nothing.
void FindEnds(Boundaries ranges, Boundaries blocks, std::vector<Row>& rows) {
    for (size_t i = 0; i < rows.size(); ++i) {
        Row& row = rows[i];
        ranges.MoveTo(row.address);
        blocks.MoveTo(row.address);
        const bool is_inside = ranges.IsInside() || blocks.IsInside();
        row.end = ranges.IsInside() ? ranges.Next() : std::min(ranges.Next(), blocks.Next());
        if (i + 1 < rows.size()) {
            row.end = std::min<uint64_t>(row.end, rows[i + 1].address);
        } else if (!is_inside) {
            row.end = uint64_t{row.address} + 1;
        }
    }
}

// Gives stretches to their units, but for what lines of other units cover in them.
void AddStretches(const std::vector<OwnedStretch>& owned, CodeMap& map) {
    for (const auto& [stretch, unit] : owned) {
        uint64_t begin = stretch.begin;
        // Rows are sorted, and their ends with them.
        auto row = std::upper_bound(map.rows.begin(), map.rows.end(), begin,
                                    [](uint64_t value, const Row& r) { return value < r.end; });
        for (; row != map.rows.end() && row->address < stretch.end; ++row) {
            if (row->unit == unit || row->address == row->end) continue;
            if (begin < row->address) map.stretches[unit].push_back({begin, row->address});
            begin = std::max(begin, row->end);
        }
        if (begin < stretch.end) map.stretches[unit].push_back({begin, stretch.end});
    }
}

}  // namespace

CodeMap BuildCodeMap(const Program& program) {
    CodeMap map;
    const size_t units = program.ProgramUnit() - program.FirstUnit() + size_t{1};
    const std::vector<OwnedStretch> ranges = ReadRanges(program);
    const std::vector<OwnedStretch> blocks = ReadBlocks(program);
    map.rows = ReadRows(program);
    map.stretches.resize(units);

    // Lines end where the owner changes, so ranges are not joined.
    std::vector<Stretch> all_ranges;
    all_ranges.reserve(ranges.size());
    for (const OwnedStretch& range : ranges) all_ranges.push_back(range.stretch);
    std::vector<Stretch> all_blocks;
    all_blocks.reserve(blocks.size());
    for (const OwnedStretch& block : blocks) all_blocks.push_back(block.stretch);
    Join(all_blocks);
    FindEnds(Boundaries(std::move(all_ranges)), Boundaries(std::move(all_blocks)), map.rows);
    AddStretches(ranges, map);
    AddStretches(blocks, map);
    std::vector<uint32_t> row_units;
    for (const Row& row : map.rows) {
        map.stretches[row.unit].push_back({row.address, row.end});
        row_units.push_back(row.unit);
    }
    map.unit_rows = Groups(row_units, units);
    for (std::vector<Stretch>& stretches : map.stretches) Join(stretches);
    return map;
}

}  // namespace scan695::dwarf
