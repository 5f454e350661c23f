// The one hash table: from 32-bit keys to 32-bit items, open addressing, 8 bytes a slot, no removal
// of single keys and no walk over what it holds. Keys are numbers of the input, addresses, or
// hashes of names (keyed_hash); where different things share a key, the finder's test tells them
// apart. Growing throws std::bad_alloc where there is no memory.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/keyed_hash.h"

namespace scan695 {

// FREE is the one number that no item may be.
template <uint32_t FREE = 0xFFFFFFFF>
class HashTable {
  public:
    // Sets the item of a key that stands for itself; the newest item replaces the others.
    void Put(uint32_t key, uint32_t item) { SlotFor(key, AnyItem) = {key, item}; }

    // Adds an item unless one of the key is there for which matches(item) holds. True when it was
    // added.
    template <class Matches>
    bool AddNew(uint32_t key, uint32_t item, const Matches& matches) {
        Slot& slot = SlotFor(key, matches);
        if (slot.item != FREE) return false;
        slot = {key, item};
        return true;
    }
    // The same for a key that stands for itself: the first item of a key stays.
    bool AddNew(uint32_t key, uint32_t item) { return AddNew(key, item, AnyItem); }

    // The item of the key for which matches(item) holds.
    template <class Matches>
    [[nodiscard]] std::optional<uint32_t> Find(uint32_t key, const Matches& matches) const {
        if (slots_.empty()) return std::nullopt;
        const Slot& slot = slots_[Probe(key, matches)];
        return slot.item == FREE ? std::nullopt : std::optional(slot.item);
    }
    // The item of a key that stands for itself.
    [[nodiscard]] std::optional<uint32_t> Find(uint32_t key) const { return Find(key, AnyItem); }

    // Makes room for that many items more, so that adding them allocates nothing.
    void ReserveMore(size_t count) {
        count += used_;
        if (!HasRoomFor(count)) Resize(std::max(count + count / 3 + 2, GrownSize()));
    }

    // Forgets all keys and gives the memory back, so that clearing never costs more than filling.
    void Clear() { *this = HashTable(); }

  private:
    struct Slot {
        uint32_t key = 0;
        uint32_t item = FREE;
    };
    static constexpr size_t FIRST_SIZE = 16;
    size_t GrownSize() const { return FIRST_SIZE + slots_.size() + slots_.size() / 2; }
    static bool AnyItem(uint32_t /*item*/) { return true; }

    // At most three slots in four are taken.
    bool HasRoomFor(size_t count) const { return count + count / 3 < slots_.size(); }

    // The slot of a matching item, or the free one, counted as taken, where it is to stand.
    template <class Matches>
    Slot& SlotFor(uint32_t key, const Matches& matches) {
        if (!HasRoomFor(used_ + 1)) Resize(GrownSize());
        Slot& slot = slots_[Probe(key, matches)];
        if (slot.item == FREE) ++used_;
        return slot;
    }

    // The place of a matching item, or of the free slot behind all of the key.
    template <class Matches>
    size_t Probe(uint32_t key, const Matches& matches) const {
        const size_t size = slots_.size();
        auto place = static_cast<size_t>((MixNumber(hash_keys_, key) >> 32) * size >> 32);
        while (slots_[place].item != FREE &&
               !(slots_[place].key == key && matches(slots_[place].item)))
            if (++place == size) place = 0;
        return place;
    }

    void Resize(size_t size) {
        std::vector<Slot> old(size);
        old.swap(slots_);
        hash_keys_ = ProcessHashKeys();
        for (const Slot& slot : old)
            if (slot.item != FREE) slots_[Probe(slot.key, [](uint32_t) { return false; })] = slot;
    }

    std::vector<Slot> slots_;  // below 2^32
    size_t used_ = 0;
    HashKeys hash_keys_ = {};
};

// For many keys: a table in parts, which grow one by one, so that growing never needs room for all
// items twice.
class LargeHashTable {
  public:
    void Put(uint32_t key, uint32_t item) { parts_[key % NOF_PARTS].Put(key, item); }
    template <class Matches>
    bool AddNew(uint32_t key, uint32_t item, const Matches& matches) {
        return parts_[key % NOF_PARTS].AddNew(key, item, matches);
    }
    template <class Matches>
    [[nodiscard]] std::optional<uint32_t> Find(uint32_t key, const Matches& matches) const {
        return parts_[key % NOF_PARTS].Find(key, matches);
    }
    [[nodiscard]] std::optional<uint32_t> Find(uint32_t key) const {
        return parts_[key % NOF_PARTS].Find(key);
    }

    void Clear() {
        for (HashTable<>& part : parts_) part.Clear();
    }

  private:
    static constexpr size_t NOF_PARTS = 64;
    std::array<HashTable<>, NOF_PARTS> parts_;
};

}  // namespace scan695
