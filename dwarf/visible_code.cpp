#include "dwarf/visible_code.h"

#include <algorithm>
#include <map>

namespace scan695::dwarf {

namespace {

// Stretches that are taken, joined.
class Taken {
  public:
    // Takes what is free of a stretch and gives it.
    std::vector<Stretch> Take(const Stretch& stretch) {
        std::vector<Stretch> free;
        uint64_t begin = stretch.begin;
        uint64_t end = stretch.end;
        auto at = ends_.upper_bound(stretch.begin);
        if (at != ends_.begin() && std::prev(at)->second >= stretch.begin) --at;
        uint64_t free_from = stretch.begin;
        while (at != ends_.end() && at->first <= stretch.end) {
            if (free_from < at->first) free.push_back({free_from, at->first});
            free_from = std::max(free_from, at->second);
            begin = std::min(begin, at->first);
            end = std::max(end, at->second);
            at = ends_.erase(at);
        }
        if (free_from < stretch.end) free.push_back({free_from, stretch.end});
        if (begin < end) ends_[begin] = end;
        return free;
    }

  private:
    std::map<uint64_t, uint64_t> ends_;  // by their begins
};

}  // namespace

BlockCode VisibleCode(const Program& program, const CodeMap& map) {
    BlockCode code(program.blocks.size());
    const auto is_before = [&](uint32_t a, uint32_t b) {
        const BLOCKINFO& left = program.blocks[a];
        const BLOCKINFO& right = program.blocks[b];
        if (left.address != right.address) return left.address < right.address;
        return left.size != right.size ? left.size > right.size : a < b;
    };
    // Outer blocks have lower numbers than those inside them; units come first.
    const auto scopes = static_cast<uint32_t>(program.ProgramUnit() + 1);
    for (uint32_t i = 0; i < scopes; ++i) {
        const uint32_t scope = (program.FirstUnit() + i) % scopes;
        std::vector<uint32_t> inner(program.scope_blocks[scope].begin(),
                                    program.scope_blocks[scope].end());
        std::sort(inner.begin(), inner.end(), is_before);
        Taken taken;
        for (auto number = inner.rbegin(); number != inner.rend(); ++number) {
            const BLOCKINFO& block = program.blocks[*number];
            code[*number] = taken.Take(StretchOf(block.address, block.size));
            const bool is_in_unit = scope >= program.FirstUnit();
            // A function inside another one may lie anywhere.
            if (!is_in_unit && block.is_function != 0 && program.blocks[scope].is_function != 0)
                continue;
            code[*number] =
                Common(code[*number],
                       is_in_unit ? map.stretches[scope - program.FirstUnit()] : code[scope]);
        }
    }
    return code;
}

}  // namespace scan695::dwarf
