// Records that wait for an index to take them in: most indexes are asked late or never, and until
// then a record costs no more than its bytes.
#pragma once

#include <cstdint>

#include "store/tables.h"

namespace scan695 {

template <class Record>
class Backlog {
  public:
    void Add(const Record& record) { AppendRecord(records_, record); }

    uint32_t Count() const { return records_.Size() / uint32_t{sizeof(Record)}; }

    // Calls take(record) for each in the order in which they came, and gives up their memory.
    template <class Take>
    void TakeAll(const Take& take) {
        const uint32_t count = Count();
        if (count == 0) return;
        for (uint32_t i = 0; i < count; ++i) {
            Record record = {};
            ReadRecord(records_, i, record);
            take(record);
            records_.FreeInFrontOf((i + 1) * uint32_t{sizeof(Record)});
        }
        records_.Free();
    }

  private:
    ChunkFile records_;
};

}  // namespace scan695
