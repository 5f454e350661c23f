#include "ask/find.h"

#include <charconv>

#include "inspector/c_text.h"
#include "inspector/lookup.h"
#include "inspector/names.h"
#include "inspector/rows.h"

namespace scan695::ask {

using inspector::ReadEntry;

namespace {

// The whole text as a number, "0x1F0" or "496".
std::optional<uint32_t> ParseNumber(std::string_view text) {
    const bool is_hex = text.starts_with("0x") || text.starts_with("0X");
    if (is_hex) text.remove_prefix(2);
    uint32_t number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, is_hex ? 16 : 10);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return number;
}

}  // namespace

Query ParseQuery(std::string text) {
    Query query;
    query.text = std::move(text);
    const std::string& whole = query.text;
    if (const auto number = ParseNumber(whole)) {
        query.kind = Query::ADDRESS;
        query.address = *number;
        return query;
    }
    const size_t colon = whole.rfind(':');
    if (colon == std::string::npos || colon == 0) return query;
    const auto line = ParseNumber(std::string_view(whole).substr(colon + 1));
    if (!line) return query;
    query.kind = Query::LINE;
    query.source = whole.substr(0, colon);
    query.line = *line;
    return query;
}

std::string Finder::NameOf(const Symbol& symbol) const {
    return std::string(inspector::NameAt(fst_, symbol.record.name_offs).value_or(""));
}

// Of the function that a symbol lies in; empty for symbols outside of functions.
std::string Finder::FunctionName(const Symbol& symbol) const {
    const auto block = places_.FunctionOf(symbol.record.block);
    const auto number = block ? inspector::FunctionSymbol(fst_, block->record) : std::nullopt;
    if (!number) return {};
    return NameOf({*number, *ReadEntry<SYMINFO>(fst_, inspector::SYMBOLS, *number)});
}

std::string Finder::SourceOf(int64_t module) const {
    if (module < 0) return {};
    const auto record =
        ReadEntry<MODULEINFO>(fst_, inspector::MODULES, static_cast<uint64_t>(module));
    return record ? std::string(inspector::NameAt(fst_, record->source_offs).value_or("")) : "";
}

std::string Finder::ModuleName(int64_t module) const {
    return inspector::ModuleNameCell(fst_, module).text;
}

// Of a symbol in code: where its first instruction comes from.
std::optional<Line> Finder::LineOf(const Symbol& symbol) const {
    if (symbol.record.mem_type != MEM_CODE || symbol.record.module < 0) return {};
    return places_.LineAt(symbol.record.value, symbol.record.module);
}

bool Finder::Print(const Query& query, std::ostream& out) {
    switch (query.kind) {
        case Query::ADDRESS:
            return PrintAddress(query, out);
        case Query::LINE:
            return PrintLine(query, out);
        default:
            return PrintNames(query, out);
    }
}

bool Finder::Write(const Query& query, inspector::JsonWriter& json) {
    switch (query.kind) {
        case Query::ADDRESS:
            return WriteAddress(query, json);
        case Query::LINE:
            return WriteLine(query, json);
        default:
            return WriteNames(query, json);
    }
}

}  // namespace scan695::ask
