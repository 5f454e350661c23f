// The symbols of a name, through the name index of the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "ask/names.h"
#include "ask/statics.h"

namespace scan695::ask {

struct NamedSymbols {
    Match match = Match::NONE;    // of all that follow
    std::vector<Symbol> symbols;  // by number
};

class SymbolSearch {
  public:
    // The file must live longer.
    explicit SymbolSearch(const Fst& fst) : fst_(fst) {}

    // The symbols called exactly so; else those that differ in case only; else, if there is a "*"
    // in the name, those that match the pattern.
    NamedSymbols Find(std::string_view name);

  private:
    struct Entry {
        uint32_t key;
        uint32_t number;
        uint64_t place;  // in the symbol table
    };

    void Consider(const Symbol& symbol, std::string_view wanted, NamedSymbols& found) const;
    void SearchSlice(const inspector::Slice& slice, std::string_view wanted,
                     NamedSymbols& found) const;
    void SearchTable(std::string_view wanted, NamedSymbols& found);

    const Fst& fst_;
    std::optional<std::vector<inspector::Slice>> slices_;
    int searches_ = 0;
    std::vector<Entry> table_;  // by key; made when many names are asked for
};

}  // namespace scan695::ask
