// The addresses of a source line, through the line number index of the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "ask/names.h"
#include "inspector/slices.h"

namespace scan695::ask {

struct FoundLine {
    uint32_t record;
    LINEINFO line;
};

struct SourceLines {
    bool has_source = false;       // some module is made of a source of this name
    std::vector<FoundLine> lines;  // of this number, by module and address
    // The lowest number of a line with code behind the one that was asked for, if that one has
    // none.
    std::optional<uint16_t> next;
};

class LineSearch {
  public:
    // The file must live longer.
    explicit LineSearch(const inspector::Fst& fst) : fst_(fst) {}

    // The source is told as the modules have it, without regard to case if none is called exactly
    // so.
    SourceLines Find(std::string_view source, uint32_t line);

  private:
    struct Entry {
        uint32_t key;
        uint32_t slice;
    };

    std::vector<uint32_t> SlicesOf(std::string_view source);

    const inspector::Fst& fst_;
    std::optional<std::vector<inspector::Slice>> slices_;
    std::vector<Entry> table_;  // by key of the source
};

}  // namespace scan695::ask
