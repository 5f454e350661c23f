#include "ask/image.h"

#include <algorithm>
#include <vector>

#include "ask/type_keys.h"

namespace scan695::ask {

namespace {

constexpr uint16_t NO_BYTE = 0x100;
constexpr uint64_t PIECE = 4096;  // bytes that are compared at once

void Read(const Image& image, uint64_t begin, uint64_t size, std::vector<uint16_t>& bytes) {
    bytes.assign(size, NO_BYTE);
    image.stretches().Split(begin, begin + size, [&](uint64_t from, uint64_t to, size_t block) {
        if (block == Stretches::NOBODY) return;
        const std::string_view piece = image.BytesOf(from, to, block);
        std::transform(piece.begin(), piece.end(),
                       bytes.begin() + static_cast<ptrdiff_t>(from - begin),
                       [](char c) { return static_cast<unsigned char>(c); });
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
    return {bytes + (begin - code.head.address), end - begin};
}

uint64_t CountDifferences(const Image& a, uint64_t at_a, const Image& b, uint64_t at_b,
                          uint64_t size) {
    std::vector<uint16_t> left, right;
    uint64_t count = 0;
    for (uint64_t done = 0; done < size; done += PIECE) {
        const uint64_t piece = std::min(PIECE, size - done);
        Read(a, at_a + done, piece, left);
        Read(b, at_b + done, piece, right);
        if (left == right) continue;
        for (size_t i = 0; i < piece; ++i) count += left[i] != right[i] ? 1 : 0;
    }
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
