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

// How many of `size` bytes differ; a byte that one image has and the other has not does.
uint64_t CountDifferences(const Image& a, uint64_t at_a, const Image& b, uint64_t at_b,
                          uint64_t size);

// A key of all bytes outside of some stretches, with their addresses.
uint64_t KeyOutside(const Image& image, const Stretches& excluded);

}  // namespace scan695::ask
