#include "ask/find.h"
#include "inspector/json.h"
#include "inspector/names.h"
#include "inspector/rows.h"

namespace scan695::ask {

namespace {

using inspector::JsonWriter;
using inspector::Table;

const Table& SymbolTable() {
    static const Table* const table = inspector::FindTable("symbols");
    return *table;
}
const Table& BlockTable() {
    static const Table* const table = inspector::FindTable("blocks");
    return *table;
}
const Table& LineTable() {
    static const Table* const table = inspector::FindTable("lines");
    return *table;
}

// null for an empty text.
void TextMember(JsonWriter& json, const char* key, const std::string& text) {
    json.Key(key);
    text.empty() ? json.Null() : json.Value(text);
}

void BeginAnswer(JsonWriter& json, const Query& query, const char* kind) {
    json.BeginObject();
    json.Member("query", query.text);
    json.Member("kind", kind);
}

// A symbol that an address is in or behind, with the distance from its beginning.
void WriteAnchor(JsonWriter& json, const std::string& what, const std::optional<Symbol>& symbol,
                 const std::string& name, std::optional<uint32_t> offset) {
    json.Key(what.c_str());
    json.Value(symbol ? std::optional(symbol->number) : std::nullopt);
    TextMember(json, (what + "_name").c_str(), name);
    json.Member((what + "_offset").c_str(), offset);
}

}  // namespace

bool Finder::WriteAddress(const Query& query, JsonWriter& json) {
    const Place place = places_.At(query.address);
    BeginAnswer(json, query, "address");
    json.Member("address", place.address);
    json.Member("memory",
                place.code
                    ? std::optional(inspector::MemoryWord(fst_.code[*place.code].head.mem_type))
                    : std::nullopt);
    json.Member("code", place.code);
    json.Member("module", place.range ? std::optional(place.range->module) : std::nullopt);
    TextMember(json, "module_name", place.range ? ModuleName(place.range->module) : "");
    const auto& function = place.function_symbol;
    WriteAnchor(json, "function", function, function ? NameOf(*function) : "",
                place.function ? std::optional(place.address - place.function->record.address)
                               : std::nullopt);
    WriteAnchor(
        json, "symbol", place.symbol, place.symbol ? NameOf(*place.symbol) : "",
        place.symbol ? std::optional(place.address - place.symbol->record.value) : std::nullopt);
    json.Member("line", place.line ? std::optional(place.line->record.number) : std::nullopt);
    TextMember(json, "source", place.line ? SourceOf(place.line->record.module) : "");
    json.Member("line_address",
                place.line ? std::optional(place.line->record.address) : std::nullopt);
    json.Key("blocks").BeginArray();
    for (const Block& block : place.blocks) {
        WriteRow(json, BlockTable(), inspector::BlockRow(fst_, block.number, block.record));
    }
    json.End();
    json.Key("variables").BeginArray();
    for (const LiveVariable& variable : places_.VariablesAt(place)) {
        const Symbol& symbol = variable.symbol;
        json.BeginObject();
        WriteMembers(json, SymbolTable(), inspector::SymbolRow(fst_, symbol.number, symbol.record));
        json.Key("location");
        if (variable.location) {
            json.BeginObject();
            inspector::WriteCells(json, SymbolTable().details[0].columns,
                                  inspector::LocationCells(fst_, *variable.location));
            json.End();
        } else {
            json.Null();
        }
        json.End();
    }
    json.End();
    json.End();
    return place.code || place.range || place.function || place.symbol;
}

bool Finder::WriteNames(const Query& query, JsonWriter& json) {
    const NamedSymbols found = symbols_.Find(query.text);
    BeginAnswer(json, query, "name");
    json.Member("match", found.symbols.empty()
                             ? std::nullopt
                             : std::optional<std::string>(MatchWord(found.match)));
    json.Key("symbols").BeginArray();
    for (const Symbol& symbol : found.symbols) {
        json.BeginObject();
        WriteMembers(json, SymbolTable(), inspector::SymbolRow(fst_, symbol.number, symbol.record));
        const auto line = LineOf(symbol);
        const auto block = places_.BlockOf(symbol);
        json.Member("function_size", block ? std::optional(block->record.size) : std::nullopt);
        TextMember(json, "function_name", FunctionName(symbol));
        json.Member("line", line ? std::optional(line->record.number) : std::nullopt);
        TextMember(json, "source", SourceOf(symbol.record.module));
        json.End();
    }
    json.End();
    json.End();
    return !found.symbols.empty();
}

bool Finder::WriteLine(const Query& query, JsonWriter& json) {
    const SourceLines found = lines_.Find(query.source, query.line);
    BeginAnswer(json, query, "line");
    json.Member("source", query.source);
    json.Member("line", query.line);
    json.Member("next_line", found.next);
    json.Key("lines").BeginArray();
    for (const FoundLine& line : found.lines) {
        WriteRow(json, LineTable(), inspector::LineRow(fst_, line.record, line.line));
    }
    json.End();
    json.End();
    return !found.lines.empty();
}

}  // namespace scan695::ask
