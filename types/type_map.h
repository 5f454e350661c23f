// The two numberings of types. The input numbers its user types per block of types, from 256 up,
// and may refer to a type before it defines it; the output numbers them in one row over the whole
// file. TMAP hands out the output's numbers and knows which type of the current block has which;
// TkAliasMap knows the types that are only another name of one.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/hash_table.h"
#include "store/records.h"

namespace scan695 {

inline constexpr uint32_t TYPE_NOT_FOUND = 0xFFFFFFFF;

class TMAP {
  public:
    // Forgets the types of the block; the numbers run on.
    void BeginBlock();

    // Takes the next number for `key`, a tk_ti or 0 for a nested type, and gives it. TakeTypeNumber
    // goes on and resolves what waits for the key.
    uint32_t Add(uint32_t key);

    // The newest type of that tk_ti. Without one the reference is counted and the marker comes
    // back; while UpdateTypes runs nothing is counted and the result is TYPE_NOT_FOUND.
    uint32_t Find(uint32_t tk_ti);

    // 1 and the newest type of that tk_ti (for 0 the newest nested type), or 0; changes nothing.
    [[nodiscard]] int Lookup(uint32_t tk_ti, uint32_t& fst_ti) const;

    // True when the block has referred to that tk_ti before it defined it.
    [[nodiscard]] bool IsPending(uint32_t tk_ti) const {
        return place_in_pending_.Find(tk_ti).has_value();
    }
    // The number of the first entry of `pending`, from number `from` on, whose marker is `marker`.
    // Two entries share a marker when they differ in bit 23 only.
    [[nodiscard]] std::optional<uint32_t> FindPending(uint32_t marker, uint32_t from) const;

    uint32_t base = 0;                       // numbers that earlier blocks took
    uint32_t next_index = FIRST_TYPE_INDEX;  // number taken next, less `base`
    uint32_t unresolved = 0;                 // references still waiting, those of symbols too
    bool updating = false;                   // while UpdateTypes runs
    std::vector<uint32_t> pending;  // tk_ti of the forward references of this block, each once

  private:
    LargeHashTable number_of_tk_;  // tk_ti of this block to its newest number, less `base`
    HashTable<> place_in_pending_;
};

class TkAliasMap {
  public:
    void Add(uint32_t tk_ti, uint32_t fst_ti) { pairs_.Put(tk_ti, fst_ti); }
    // 1 and the newest type of that name, or 0. The type may be a marker.
    [[nodiscard]] int Find(uint32_t tk_ti, uint32_t& fst_ti) const;
    void Clear() { pairs_.Clear(); }

  private:
    // No type has that index: it is no marker, and numbers stay below 2^31.
    HashTable<~TYPE_MARKER_BIT> pairs_;
};

}  // namespace scan695
