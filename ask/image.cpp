#include "ask/image.h"

#include <algorithm>
#include <vector>

#include "ask/type_keys.h"

namespace scan695::ask {

namespace {

constexpr uint64_t END_OF_IMAGES = uint64_t{1} << 33;  // a block may reach over the last address

// Calls `use(begin, end)` for the stretches of [at_a, at_a + size) that differ from those at at_b.
template <class Use>
void ForEachDifference(const Image& a, uint64_t at_a, const Image& b, uint64_t at_b, uint64_t size,
                       Use use) {
    a.stretches().Split(at_a, at_a + size, [&](uint64_t from, uint64_t to, size_t block_a) {
        const uint64_t shifted = from - at_a + at_b;
        const auto compare = [&](uint64_t piece, uint64_t piece_end, size_t block_b) {
            const uint64_t begin = piece - at_b + at_a;
            const uint64_t end = begin + (piece_end - piece);
            const bool has_a = block_a != Stretches::NOBODY;
            const bool has_b = block_b != Stretches::NOBODY;
            if (has_a != has_b) use(begin, end);
            if (!has_a || !has_b) return;
            const std::string_view x = a.BytesOf(begin, end, block_a);
            const std::string_view y = b.BytesOf(piece, piece_end, block_b);
            if (x == y) return;
            for (size_t i = 0; i < x.size(); ++i)
                if (x[i] != y[i]) use(begin + i, begin + i + 1);
        };
        b.stretches().Split(shifted, shifted + (to - from), compare);
    });
}

}  // namespace

Image::Image(const inspector::Fst& fst) : fst_(fst) {
    std::vector<size_t> order(fst.code.size());
    for (size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
        return fst.code[a].head.address < fst.code[b].head.address;
    });
    for (const size_t i : order) {
        const CODEINFO& head = fst.code[i].head;
        stretches_.Add(head.address, uint64_t{head.address} + head.length, i);
    }
}

std::string_view Image::BytesOf(uint64_t begin, uint64_t end, size_t block) const {
    const inspector::CodeBlock& code = fst_.code[block];
    const auto* bytes = reinterpret_cast<const char*>(fst_.bytes.data()) + code.body;
    return {bytes + (begin - code.head.address), static_cast<size_t>(end - begin)};
}

Differences::Differences(const Image& a, const Image& b) : a_(a), b_(b) {
    ForEachDifference(a, 0, b, 0, END_OF_IMAGES, [&](uint64_t begin, uint64_t end) {
        const uint64_t before =
            runs_.empty() ? 0 : runs_.back().before + runs_.back().end - runs_.back().begin;
        if (!runs_.empty() && runs_.back().end == begin)
            runs_.back().end = end;
        else
            runs_.push_back({begin, end, before});
    });
}

uint64_t Differences::CountBelow(uint64_t address) const {
    const auto next = std::ranges::upper_bound(runs_, address, {}, &Run::begin);
    if (next == runs_.begin()) return 0;
    const Run& run = *(next - 1);
    return run.before + std::min(address, run.end) - run.begin;
}

uint64_t Differences::Count(uint64_t at_a, uint64_t at_b, uint64_t size) const {
    if (at_a == at_b) return CountBelow(at_a + size) - CountBelow(at_a);
    uint64_t count = 0;
    ForEachDifference(a_, at_a, b_, at_b, size,
                      [&](uint64_t begin, uint64_t end) { count += end - begin; });
    return count;
}

uint64_t KeyOutside(const Image& image, const Stretches& excluded) {
    KeyMaker key;
    std::string run;  // without a gap, so that it does not count how the bytes are cut into blocks
    uint64_t run_end = UINT64_MAX;
    for (const Stretch& stretch : image.stretches().list()) {
        excluded.Split(stretch.begin, stretch.end, [&](uint64_t from, uint64_t to, size_t owner) {
            if (owner != Stretches::NOBODY) return;
            if (from != run_end) {
                key.Add(run).Add(from);
                run.clear();
            }
            run += image.BytesOf(from, to, stretch.owner);
            run_end = to;
        });
    }
    return key.Add(run).key();
}

}  // namespace scan695::ask
