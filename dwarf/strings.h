// A table of NUL-terminated texts, each one once: .debug_str, .strtab.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "dwarf/bytes.h"

namespace scan695::dwarf {

class StringTable {
  public:
    // The empty text stands at 0.
    StringTable() { PutText(bytes_, ""); }

    uint32_t Offset(std::string_view text) {
        if (text.empty()) return 0;
        const auto [entry, is_new] = offsets_.try_emplace(std::string(text), Size32(bytes_));
        if (is_new) PutText(bytes_, text);
        return entry->second;
    }

    const Bytes& bytes() const { return bytes_; }

  private:
    Bytes bytes_;
    std::unordered_map<std::string, uint32_t> offsets_;
};

}  // namespace scan695::dwarf
