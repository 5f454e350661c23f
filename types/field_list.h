// A list of FIELDINFO under construction: members, enumeration items or parameters.
#pragma once

#include <cstdint>
#include <vector>

#include "store/records.h"
#include "store/tables.h"

namespace scan695 {

class FieldList {
  public:
    void Add(const FIELDINFO& field) {
        if (fields_.size() < MOST_STORED) fields_.push_back(field);
        ++count_;
    }

    // All elements added, also those that will not be stored.
    uint32_t Count() const { return count_; }
    const FIELDINFO& operator[](size_t number) const { return fields_[number]; }

    // An item's length counts by its low 16 bits only: a longer list loses its end, and one of a
    // multiple of 4,096 elements is not stored at all.
    uint32_t StoredCount() const { return count_ % (MOST_STORED + 1); }
    // Puts the list into the image and gives its offset, 0 when nothing was stored.
    uint32_t Store() const {
        return StoreInImage(fields_.data(), StoredCount() * sizeof(FIELDINFO));
    }

  private:
    static constexpr uint32_t MOST_STORED = MAX_ITEM_SIZE / sizeof(FIELDINFO);

    std::vector<FIELDINFO> fields_;
    uint32_t count_ = 0;
};

}  // namespace scan695
