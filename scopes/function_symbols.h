// The symbol of a function by its address: the first one of a symbol table with that value that
// lies in code memory and has a type record.
#pragma once

#include <cstdint>
#include <optional>

#include "base/hash_table.h"
#include "store/backlog.h"
#include "store/records.h"

namespace scan695 {

class FunctionSymbols {
  public:
    void Add(const SYMINFO& record, uint32_t number) {
        if (record.mem_type == MEM_CODE && record.type_index >= FIRST_TYPE_INDEX)
            waiting_.Add({record.value, number});
    }
    // The record number.
    std::optional<uint32_t> Find(uint32_t address);

  private:
    struct Function {
        uint32_t address;
        uint32_t number;
    };
    Backlog<Function> waiting_;
    HashTable<> numbers_;  // by address
};

}  // namespace scan695
