#include "ask/diff.h"
#include "inspector/c_text.h"
#include "inspector/json.h"
#include "inspector/names.h"
#include "inspector/rows.h"

namespace scan695::ask {

namespace {

using inspector::JsonWriter;

std::optional<std::string> TextOrNull(std::string text) {
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

template <class Side>
const char* ChangeWord(const std::optional<Side>& before, const std::optional<Side>& after) {
    return !before ? "come" : !after ? "gone" : "changed";
}

void WriteSide(JsonWriter& json, const char* key, const Fst& fst,
               const std::optional<DiffSymbol>& side) {
    json.Key(key);
    if (!side) return json.Null();
    const SYMINFO& record = side->symbol.record;
    json.BeginObject();
    json.Member("symbol", side->symbol.number);
    json.Member("address", record.value);
    json.Member("size", side->size);
    json.Member("type", record.type_index);
    json.Member("type_name", inspector::Declaration(fst, record.type_index));
    json.End();
}

void WriteSymbols(JsonWriter& json, const Fst& before, const Fst& after, const Diff& diff) {
    json.Key("symbols").BeginArray();
    for (const SymbolChange& change : diff.symbols) {
        const bool is_after = change.after.has_value();
        const DiffSymbol& named = is_after ? *change.after : *change.before;
        const SYMINFO& record = named.symbol.record;
        json.BeginObject();
        json.Member("change", ChangeWord(change.before, change.after));
        json.Member(
            "symbol_name",
            TextOrNull(inspector::NameCell(is_after ? after : before, record.name_offs).text));
        json.Member("module_name", TextOrNull(named.module));
        json.Member("function_name", TextOrNull(named.function));
        json.Member("memory", inspector::MemoryWord(record.mem_type));
        json.Member("is_moved", change.is_moved);
        json.Member("is_resized", change.is_resized);
        json.Member("is_retyped", change.is_retyped);
        json.Member("bytes", change.bytes);
        WriteSide(json, "old", before, change.before);
        WriteSide(json, "new", after, change.after);
        json.End();
    }
    json.End();
}

void WriteTypes(JsonWriter& json, const char* key, const std::vector<uint32_t>& types) {
    json.Key(key).BeginArray();
    for (const uint32_t type : types) json.Value(type);
    json.End();
}

void WriteLayouts(JsonWriter& json, const Fst& before, const Fst& after, const Diff& diff) {
    json.Key("layouts").BeginArray();
    for (const LayoutChange& change : diff.layouts) {
        const bool is_gone = change.after.empty();
        json.BeginObject();
        json.Member("change", change.before.empty() ? "come" : is_gone ? "gone" : "changed");
        json.Member("type_name", is_gone ? inspector::Declaration(before, change.before[0])
                                         : inspector::Declaration(after, change.after[0]));
        WriteTypes(json, "old", change.before);
        WriteTypes(json, "new", change.after);
        json.End();
    }
    json.End();
}

void WriteTotals(JsonWriter& json, const char* key, const std::optional<ModuleTotals>& totals) {
    json.Key(key);
    if (!totals) return json.Null();
    json.BeginObject();
    json.Member("code", totals->bytes.code);
    json.Member("constants", totals->bytes.constants);
    json.Member("data", totals->bytes.data);
    json.Member("lines", totals->lines);
    json.End();
}

}  // namespace

void WriteDiff(const Fst& before, const Fst& after, const Diff& diff, JsonWriter& json) {
    json.Member("is_equal", diff.IsEmpty());
    WriteSymbols(json, before, after, diff);
    WriteLayouts(json, before, after, diff);
    json.Key("modules").BeginArray();
    for (const ModuleChange& change : diff.modules) {
        json.BeginObject();
        json.Member("change", ChangeWord(change.before, change.after));
        json.Member("module_name", TextOrNull(change.name));
        WriteTotals(json, "old", change.before);
        WriteTotals(json, "new", change.after);
        json.End();
    }
    json.End();
    json.Key("image").BeginObject();
    json.Member("old", diff.image_before);
    json.Member("new", diff.image_after);
    json.Member("is_rest_changed", diff.is_rest_changed);
    json.End();
}

}  // namespace scan695::ask
