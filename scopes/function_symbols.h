// The symbol of a function by its address: the first record of a symbol table with that value that
// lies in code memory and has a type record.
#pragma once

#include <cstdint>
#include <optional>

#include "base/hash_table.h"
#include "store/chunk_file.h"

namespace scan695 {

class FunctionSymbols {
  public:
    // Takes in the records of the table that it does not hold yet, up to `count` in all.
    void Update(ChunkFile& table, uint32_t count);
    // The record number.
    std::optional<uint32_t> Find(uint32_t address) const { return records_.Find(address); }

  private:
    HashTable<> records_;  // the first record of each address
    uint32_t nof_records_ = 0;
};

}  // namespace scan695
