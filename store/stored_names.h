// Stored names: reading one back from the image, and an index that tells whether any record of a
// table has a given name. The index is brought up to date by its user, record by record in the
// order of the table, so that it costs nothing where nobody asks.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/hash_table.h"
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
    // Takes in the records of the table that it does not hold yet, up to `count` in all. False when
    // a name cannot be read back.
    template <class Record>
    [[nodiscard]] bool Update(const ChunkFile& table, uint32_t count) {
        for (; nof_records_ < count; ++nof_records_) {
            Record record = {};
            ReadRecord(table, nof_records_, record);
            if (!Add(record.name_offs)) return false;
        }
        return true;
    }
    // True when a record taken in has exactly this name.
    bool Contains(std::string_view name) const;

  private:
    static bool HasName(uint32_t name_offs, std::string_view name);
    bool Add(uint32_t name_offs);

    HashTable<> offsets_;  // by hash of the name; equal names have one entry
    uint32_t nof_records_ = 0;
};

}  // namespace scan695
