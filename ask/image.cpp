#include "ask/image.h"

#include <algorithm>
#include <vector>

#include "ask/type_keys.h"

namespace scan695::ask {

namespace {

uint64_t CountDifferences(std::string_view a, std::string_view b) {
    if (a == b) return 0;
    uint64_t count = 0;
    for (size_t i = 0; i < a.size(); ++i) count += a[i] != b[i] ? 1 : 0;
    return count;
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
    return {bytes + (begin - code.head.address), end - begin};
}

uint64_t CountDifferences(const Image& a, uint64_t at_a, const Image& b, uint64_t at_b,
                          uint64_t size) {
    uint64_t count = 0;
    a.stretches().Split(at_a, at_a + size, [&](uint64_t from, uint64_t to, size_t block_a) {
        const uint64_t shifted = from - at_a + at_b;
        const auto compare = [&](uint64_t first, uint64_t behind, size_t block_b) {
            const uint64_t begin = first - at_b + at_a;
            const uint64_t length = behind - first;
            const bool has_a = block_a != Stretches::NOBODY;
            const bool has_b = block_b != Stretches::NOBODY;
            if (has_a != has_b) count += length;
            if (has_a && has_b)
                count += CountDifferences(a.BytesOf(begin, begin + length, block_a),
                                          b.BytesOf(first, behind, block_b));
        };
        b.stretches().Split(shifted, shifted + (to - from), compare);
    });
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
