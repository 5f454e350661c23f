// Types by what they are, whatever numbers they have: two builds that number their types in another
// order give the same keys.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "inspector/lists.h"
#include "inspector/lookup.h"

namespace scan695::ask {

// A hash that grows by numbers and names.
class KeyMaker {
  public:
    KeyMaker& Add(uint64_t number) {
        key_ = (key_ ^ number) * 0x9E3779B97F4A7C15;
        key_ ^= key_ >> 29;
        return *this;
    }
    KeyMaker& Add(std::string_view text);
    uint64_t key() const { return key_; }

  private:
    uint64_t key_ = 0xCBF29CE484222325;
};

class TypeKeys {
  public:
    explicit TypeKeys(const inspector::Fst& fst);

    // Of a type as a declaration names it: a struct, union or enumeration with a tag is its tag.
    uint64_t Of(uint32_t type_index) const;

    // Of everything that makes a struct, union or enumeration, its tag included.
    uint64_t OfLayout(const TYPEINFO& type) const;

  private:
    uint64_t Compute(const TYPEINFO& type) const;
    uint64_t KeyOfList(const TYPEINFO& type) const;
    void ComputeLists();

    const inspector::Fst& fst_;
    inspector::ListSet lists_;
    std::vector<uint64_t> list_keys_;  // by list, of the keys of their types
    std::vector<uint64_t> keys_;       // by record
};

}  // namespace scan695::ask
