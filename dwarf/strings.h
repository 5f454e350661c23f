// A table of NUL-terminated texts, each one once: .debug_str, .strtab.
#pragma once

#include <string_view>

#include "base/hash_table.h"
#include "dwarf/bytes.h"

namespace scan695::dwarf {

class StringTable {
  public:
    // The empty text stands at 0.
    StringTable() { PutText(bytes_, ""); }

    uint32_t Offset(std::string_view text) {
        if (text.empty()) return 0;
        const uint32_t next = Size32(bytes_);
        const uint32_t key = HashBytes(text);
        const auto is_text = [&](uint32_t offset) { return TextAt(offset) == text; };
        if (const auto offset = offsets_.Find(key, is_text)) return *offset;
        offsets_.AddNew(key, next, [](uint32_t) { return false; });
        PutText(bytes_, text);
        return next;
    }

    const Bytes& bytes() const { return bytes_; }

  private:
    std::string_view TextAt(uint32_t offset) const {
        return reinterpret_cast<const char*>(bytes_.data()) + offset;
    }

    Bytes bytes_;
    HashTable<> offsets_;
};

}  // namespace scan695::dwarf
