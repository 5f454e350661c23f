// The table of abbreviations: the shapes of entries (tag, children, attributes with their forms),
// numbered from 1 in the order of their first use.
#pragma once

#include <string>
#include <unordered_map>

#include "dwarf/bytes.h"

namespace scan695::dwarf {

class Abbreviations {
  public:
    // `shape` is what .debug_abbrev holds behind the number, without the two zeros at its end.
    uint32_t Number(const std::string& shape);

    // The table with its end mark.
    Bytes Table() const;

  private:
    std::unordered_map<std::string, uint32_t> numbers_;
    Bytes bytes_;
};

}  // namespace scan695::dwarf
