// Stored names: reading one back from the image, and an index that tells whether a name is among
// some of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/hash_table.h"
#include "store/backlog.h"
#include "store/records.h"
#include "store/tables.h"

namespace scan695 {

struct StoredName {
    char text[MAX_NAME_LENGTH + 1] = {};
};

// The name at an image offset; none for an offset outside the image.
std::optional<StoredName> ReadStoredName(uint32_t name_offs);

class NameIndex {
  public:
    // Adds the stored name at an image offset. It is looked at when somebody asks.
    void Add(uint32_t name_offs) { waiting_.Add(name_offs); }
    // True when exactly this name has been added.
    bool Contains(std::string_view name);

  private:
    static bool HasName(uint32_t name_offs, std::string_view name);
    void TakeIn(uint32_t name_offs);

    Backlog<uint32_t> waiting_;
    LargeHashTable offsets_;  // by hash of the name; equal names have one entry
};

}  // namespace scan695
