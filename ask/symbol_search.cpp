#include "ask/symbol_search.h"

#include <algorithm>

#include "inspector/lookup.h"

namespace scan695::ask {

using inspector::ReadEntry;

namespace {

constexpr int FEW = 8;  // searches that go through every scope; behind them a table pays

}  // namespace

// A better match drops the worse ones.
void SymbolSearch::Consider(const Symbol& symbol, std::string_view wanted,
                            NamedSymbols& found) const {
    const auto name = inspector::NameAt(fst_, symbol.record.name_offs);
    if (!name) return;
    const Match match = MatchOf(*name, wanted);
    if (match == Match::NONE || match > found.match) return;
    if (match < found.match) found.symbols.clear();
    found.match = match;
    found.symbols.push_back(symbol);
}

void SymbolSearch::SearchSlice(const inspector::Slice& slice, std::string_view wanted,
                               NamedSymbols& found) const {
    const auto symbol_at = [&](uint32_t number) {
        return ReadEntry<SYMINFO>(fst_, inspector::SYMBOLS, slice.entry + (number - slice.first));
    };
    const auto name_of = [&](uint32_t number) {
        const auto symbol = symbol_at(number);
        const auto name = symbol ? inspector::NameAt(fst_, symbol->name_offs) : std::nullopt;
        return name.value_or("");
    };
    // Names that can match have what stands in front of the first star in common. Where the symbol
    // table lacks records the slices of blocks are in no order.
    const bool has_star = wanted.find('*') != std::string_view::npos;
    const std::string_view prefix = wanted.substr(0, wanted.find('*'));
    const uint64_t end = slice.entry + slice.count;
    uint64_t at = slice.entry;
    const bool is_sorted = inspector::HasAllSymbols(fst_) || slice.block == -1;
    if (is_sorted) {
        at = inspector::LowerBound(
            fst_, inspector::SYMBOL_NAME_INDEX, at, end,
            [&](uint32_t number) { return CompareNames(name_of(number), prefix) < 0; });
    }
    for (; at < end; ++at) {
        const auto number = ReadEntry<uint32_t>(fst_, inspector::SYMBOL_NAME_INDEX, at);
        const auto symbol = number ? symbol_at(*number) : std::nullopt;
        if (!symbol) return;
        const std::string_view name = name_of(*number);
        const bool is_behind = has_star ? CompareNames(name.substr(0, prefix.size()), prefix) != 0
                                        : CompareNames(name, wanted) != 0;
        if (is_sorted && is_behind) return;
        Consider({*number, *symbol}, wanted, found);
    }
}

void SymbolSearch::SearchTable(std::string_view wanted, NamedSymbols& found) {
    if (table_.empty()) {
        for (const inspector::Slice& slice : *slices_) {
            for (uint32_t i = 0; i < slice.count; ++i) {
                const auto symbol = ReadEntry<SYMINFO>(fst_, inspector::SYMBOLS, slice.entry + i);
                const auto name =
                    symbol ? inspector::NameAt(fst_, symbol->name_offs) : std::nullopt;
                if (name) table_.push_back({NameKey(*name), slice.first + i, slice.entry + i});
            }
        }
        std::sort(table_.begin(), table_.end(),
                  [](const Entry& a, const Entry& b) { return a.key < b.key; });
    }
    const uint32_t key = NameKey(wanted);
    auto at =
        std::lower_bound(table_.begin(), table_.end(), key,
                         [](const Entry& entry, uint32_t sought) { return entry.key < sought; });
    for (; at != table_.end() && at->key == key; ++at)
        Consider({at->number, *ReadEntry<SYMINFO>(fst_, inspector::SYMBOLS, at->place)}, wanted,
                 found);
}

NamedSymbols SymbolSearch::Find(std::string_view name) {
    if (!slices_) slices_ = inspector::SymbolSlices(fst_);
    NamedSymbols found;
    if (name.find('*') == std::string_view::npos && ++searches_ > FEW) {
        SearchTable(name, found);
    } else {
        for (const inspector::Slice& slice : *slices_) SearchSlice(slice, name, found);
    }
    std::sort(found.symbols.begin(), found.symbols.end(),
              [](const Symbol& a, const Symbol& b) { return a.number < b.number; });
    return found;
}

}  // namespace scan695::ask
