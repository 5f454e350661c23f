// A map from 32-bit keys to 32-bit values for the look-ups of the scan: open addressing, no removal
// of single keys.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace scan695 {

class HashIndex {
  public:
    // Sets the value of a key; the newest value replaces the others.
    void Put(uint32_t key, uint32_t value) {
        if (key == 0) {
            zero_ = value;
            return;
        }
        if (used_ * 4 >= entries_.size() * 3) Grow();
        Entry& entry = entries_[PlaceOf(key)];
        if (entry.key == 0) ++used_;
        entry = {key, value};
    }

    // Null for a key without value. The pointer holds until the next Put.
    const uint32_t* Find(uint32_t key) const {
        if (key == 0) return zero_ ? &*zero_ : nullptr;
        if (used_ == 0) return nullptr;
        const Entry& entry = entries_[PlaceOf(key)];
        return entry.key == key ? &entry.value : nullptr;
    }

    // Forgets all keys and gives the memory back, so that clearing never costs more than filling.
    void Clear() { *this = HashIndex(); }

  private:
    struct Entry {
        uint32_t key = 0;
        uint32_t value = 0;
    };
    static constexpr uint32_t FIRST_BITS = 4;

    // Where the key stands, or the free entry where it would stand.
    size_t PlaceOf(uint32_t key) const {
        const size_t mask = entries_.size() - 1;
        size_t place = key * 0x9E3779B1U >> (32 - bits_);
        while (entries_[place].key != 0 && entries_[place].key != key) place = (place + 1) & mask;
        return place;
    }

    void Grow() {
        bits_ = entries_.empty() ? FIRST_BITS : bits_ + 1;
        std::vector<Entry> old(size_t{1} << bits_);
        old.swap(entries_);
        for (const Entry& entry : old)
            if (entry.key != 0) entries_[PlaceOf(entry.key)] = entry;
    }

    std::vector<Entry> entries_;    // a power of two of them; the key 0 marks a free one
    std::optional<uint32_t> zero_;  // the value of the key 0
    uint32_t bits_ = 0;
    size_t used_ = 0;
};

}  // namespace scan695
