// The numbering of types and the resolution of forward references in their plainest form: arrays
// searched from their ends, and a walk over every record for each update. The measure for the
// indexes of the library.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "store/records.h"

namespace scan695::test {

class PlainTypes {
  public:
    void BeginBlock();
    uint32_t Add(uint32_t key);
    uint32_t Find(uint32_t tk_ti);
    void Update();
    uint32_t StoreList(const std::vector<FIELDINFO>& list);  // the offset, 0 for an empty list

    std::vector<TYPEINFO> table;
    std::vector<uint8_t> image;
    uint32_t unresolved = 0;
    uint32_t bitfields_pending = 0;
    uint32_t bitfields_struct = 0;
    uint32_t base = 0;
    std::vector<uint32_t> slots;
    std::string trace;

  private:
    struct Counts {
        uint32_t matched;
        uint32_t resolved;
    };
    Counts Patch(uint32_t& field, const char* label);
    void WalkList(uint32_t position, uint32_t offset, uint32_t count, bool members);
    void Say(const char* format, ...) __attribute__((format(printf, 2, 3)));

    std::vector<uint32_t> pending_;
    bool updating_ = false;
};

}  // namespace scan695::test
