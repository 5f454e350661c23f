#include "ask/sizes.h"
#include "inspector/c_text.h"
#include "inspector/json.h"
#include "inspector/lookup.h"
#include "inspector/names.h"
#include "inspector/rows.h"

namespace scan695::ask {

namespace {

using inspector::JsonWriter;

void WriteBytes(JsonWriter& json, const Bytes& bytes) {
    json.Member("code", bytes.code);
    json.Member("constants", bytes.constants);
    json.Member("data", bytes.data);
}

// null for an empty text.
void TextMember(JsonWriter& json, const char* key, const inspector::Cell& text) {
    json.Member(key, text.kind == inspector::Cell::TEXT ? std::optional(text.text) : std::nullopt);
}

void WriteModule(JsonWriter& json, const Fst& fst, int64_t module) {
    json.Member("module", module < 0 ? std::nullopt : std::optional(module));
    TextMember(json, "module_name", inspector::ModuleNameCell(fst, module));
}

void WriteTotals(JsonWriter& json, const Sizes& sizes) {
    json.Key("totals").BeginObject();
    json.Member("image", sizes.image);
    WriteBytes(json, sizes.bytes);
    json.Member("ranges", sizes.range);
    json.Member("lines", sizes.lines);
    json.Member("code_outside_functions", sizes.code_outside_functions);
    json.End();
}

void WriteModules(JsonWriter& json, const Fst& fst, const Sizes& sizes) {
    json.Key("modules").BeginArray();
    for (const ModuleSize& module : sizes.modules) {
        json.BeginObject();
        WriteModule(json, fst, module.module ? int64_t{*module.module} : -1);
        WriteBytes(json, module.bytes);
        json.Member("ranges", module.range);
        json.Member("functions", module.functions);
        json.Member("lines", module.lines);
        json.End();
    }
    json.End();
}

void WriteMemories(JsonWriter& json, const Sizes& sizes) {
    json.Key("memories").BeginArray();
    for (const MemorySize& memory : sizes.memories) {
        json.BeginObject();
        json.Member("memory", inspector::MemoryWord(memory.memory));
        json.Member("address", memory.address);
        json.Member("size", memory.size);
        json.Member("code", memory.code);
        json.Member("constants", memory.constants);
        json.Member("nobody", memory.nobody);
        json.End();
    }
    json.End();
}

void WriteFunctions(JsonWriter& json, const Fst& fst, const Sizes& sizes) {
    json.Key("functions").BeginArray();
    for (const FunctionSize& function : sizes.functions) {
        const auto number = inspector::FunctionSymbol(fst, function.record);
        const auto symbol =
            number ? inspector::ReadEntry<SYMINFO>(fst, inspector::SYMBOLS, *number) : std::nullopt;
        json.BeginObject();
        json.Member("function", number);
        TextMember(json, "function_name",
                   symbol ? inspector::NameCell(fst, symbol->name_offs) : inspector::Cell{});
        json.Member("block", function.block);
        WriteModule(json, fst, function.record.module);
        json.Member("address", function.record.address);
        json.Member("size", function.record.size);
        json.Member("code", function.code);
        json.Member("lines", function.lines);
        json.End();
    }
    json.End();
}

void WriteVariables(JsonWriter& json, const Fst& fst, const Sizes& sizes) {
    json.Key("variables").BeginArray();
    for (const VariableSize& variable : sizes.variables) {
        const SYMINFO& record = variable.symbol.record;
        json.BeginObject();
        json.Member("symbol", variable.symbol.number);
        TextMember(json, "symbol_name", inspector::NameCell(fst, record.name_offs));
        WriteModule(json, fst, record.module);
        json.Member("memory", inspector::MemoryWord(record.mem_type));
        json.Member("address", record.value);
        json.Member("size", record.size);
        json.Member("constants", variable.constants);
        json.Member("data", variable.data);
        json.Member("type", record.type_index);
        json.Member("type_name", inspector::Declaration(fst, record.type_index));
        json.End();
    }
    json.End();
}

}  // namespace

void WriteSizes(const Fst& fst, const Sizes& sizes, JsonWriter& json) {
    WriteTotals(json, sizes);
    WriteModules(json, fst, sizes);
    WriteMemories(json, sizes);
    WriteFunctions(json, fst, sizes);
    WriteVariables(json, fst, sizes);
}

}  // namespace scan695::ask
