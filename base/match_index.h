// An index from 32-bit keys to record numbers or offsets: open addressing, 8 bytes a slot. Keys are
// addresses or hashes of names; where different things share a key, the finder's test tells them
// apart.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace scan695 {

class MatchIndex {
  public:
    static constexpr uint32_t NONE = 0xFFFFFFFF;

    // Adds an item, which is any number but NONE, unless matches(item) holds for one of the key.
    // True when it was added.
    template <class Matches>
    bool AddNew(uint32_t key, uint32_t item, Matches matches) {
        if (2 * (count_ + 1) > slots_.size()) Grow();
        size_t at = Home(key);
        for (; slots_[at].item != NONE; at = (at + 1) & Mask())
            if (slots_[at].key == key && matches(slots_[at].item)) return false;
        slots_[at] = {key, item};
        ++count_;
        return true;
    }
    // The same for a key that stands for itself: the first item of a key stays.
    bool AddNew(uint32_t key, uint32_t item) {
        return AddNew(key, item, [](uint32_t) { return true; });
    }

    // An item of the key for which matches(item) holds; NONE without one.
    template <class Matches>
    uint32_t Find(uint32_t key, Matches matches) const {
        if (slots_.empty()) return NONE;
        for (size_t at = Home(key); slots_[at].item != NONE; at = (at + 1) & Mask())
            if (slots_[at].key == key && matches(slots_[at].item)) return slots_[at].item;
        return NONE;
    }
    // The item of a key that stands for itself.
    uint32_t Find(uint32_t key) const {
        return Find(key, [](uint32_t) { return true; });
    }

  private:
    struct Slot {
        uint32_t key = 0;
        uint32_t item = NONE;
    };
    static constexpr size_t FIRST_SIZE = 64;  // a power of two, and all sizes behind it

    size_t Mask() const { return slots_.size() - 1; }
    // Spreads neighbouring keys: addresses come in steps.
    size_t Home(uint32_t key) const {
        key = (key ^ key >> 16) * 0x85EBCA6BU;
        key = (key ^ key >> 13) * 0xC2B2AE35U;
        return (key ^ key >> 16) & Mask();
    }
    void Place(const Slot& slot) {
        size_t at = Home(slot.key);
        while (slots_[at].item != NONE) at = (at + 1) & Mask();
        slots_[at] = slot;
    }
    void Grow() {
        std::vector<Slot> old(slots_.empty() ? FIRST_SIZE : 2 * slots_.size());
        old.swap(slots_);
        for (const Slot& slot : old)
            if (slot.item != NONE) Place(slot);
    }

    std::vector<Slot> slots_;
    size_t count_ = 0;
};

}  // namespace scan695
