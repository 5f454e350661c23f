// The bytes of the image by address.
#pragma once

#include <cstdint>
#include <string>

#include "ask/stretches.h"
#include "inspector/reader.h"

namespace scan695::ask {

class Image {
  public:
    // The file must live longer.
    explicit Image(const inspector::Fst& fst);

    // Without overlaps; the owner is the number of the block.
    const Stretches& stretches() const { return stretches_; }

    // The bytes of a piece of one stretch.
    std::string_view BytesOf(uint64_t begin, uint64_t end, size_t block) const;

  private:
    const inspector::Fst& fst_;
    Stretches stretches_;
};

// How two images differ. A byte that one image has and the other has not does. Bytes that have
// stayed where they were are compared once, however many symbols lie over them.
class Differences {
  public:
    // The images must live longer.
    Differences(const Image& a, const Image& b);

    // How many of the `size` bytes of `a` at one address and of `b` at another differ.
    uint64_t Count(uint64_t at_a, uint64_t at_b, uint64_t size) const;

  private:
    // Addresses without a gap at which the images differ.
    struct Run {
        uint64_t begin;
        uint64_t end;
        uint64_t before;  // bytes of all runs in front
    };
    uint64_t CountBelow(uint64_t address) const;

    const Image& a_;
    const Image& b_;
    std::vector<Run> runs_;
};

// A key of all bytes outside of some stretches, with their addresses.
uint64_t KeyOutside(const Image& image, const Stretches& excluded);

}  // namespace scan695::ask
