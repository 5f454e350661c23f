#include <algorithm>
#include <ostream>

#include "ask/sizes.h"
#include "inspector/c_text.h"
#include "inspector/lookup.h"
#include "inspector/names.h"
#include "inspector/rows.h"

namespace scan695::ask {

namespace {

using inspector::HexText;
using inspector::Printable;

constexpr size_t NUMBER_WIDTH = 10;

// Cells right-aligned under one another, a text behind them.
void PrintRow(std::ostream& out, const std::vector<std::string>& cells, const std::string& text) {
    for (const std::string& cell : cells) {
        out << std::string(cell.size() < NUMBER_WIDTH ? NUMBER_WIDTH - cell.size() : 0, ' ')
            << cell;
    }
    out << (text.empty() ? "" : "  ") << text << '\n';
}

void PrintNumbers(std::ostream& out, const std::vector<uint64_t>& numbers,
                  const std::string& text) {
    std::vector<std::string> cells;
    cells.reserve(numbers.size());
    for (const uint64_t number : numbers)
        cells.push_back(number == 0 ? "-" : std::to_string(number));
    PrintRow(out, cells, text);
}

// The line above the sums.
void PrintRule(std::ostream& out, size_t columns) {
    PrintRow(out, std::vector<std::string>(columns, "-------"), "");
}

// Prints the first rows and how many are left.
template <class Item, class Print>
void PrintFirst(const std::vector<Item>& items, size_t limit, std::ostream& out, Print print) {
    for (size_t i = 0; i < std::min(limit, items.size()); ++i) print(items[i]);
    if (items.size() > limit)
        PrintRow(out, {"..."}, "and " + std::to_string(items.size() - limit) + " more");
}

std::string NameText(const Fst& fst, uint32_t offset) {
    const auto name = inspector::NameAt(fst, offset);
    return name && !name->empty() ? Printable(*name) : "?";
}

std::string ModuleName(const Fst& fst, int64_t module) {
    return module < 0 ? "" : Printable(inspector::ModuleNameCell(fst, module).text);
}

std::string Span(uint32_t address, uint64_t size) {
    return HexText(address) + "-" + HexText(static_cast<uint32_t>(address + size - 1));
}

void PrintModules(const Fst& fst, const Sizes& sizes, size_t limit, std::ostream& out) {
    PrintRow(out, {"code", "constants", "data", "ranges", "lines"}, "module");
    PrintFirst(sizes.modules, limit, out, [&](const ModuleSize& module) {
        const Bytes& bytes = module.bytes;
        PrintNumbers(out, {bytes.code, bytes.constants, bytes.data, module.range, module.lines},
                     module.module ? ModuleName(fst, *module.module) : "(nobody)");
    });
    PrintRule(out, 5);
    const Bytes& all = sizes.bytes;
    PrintNumbers(
        out, {all.code, all.constants, all.data, sizes.range, sizes.lines},
        "all: code and constants are the image of " + std::to_string(sizes.image) + " bytes");
}

void PrintMemories(const Sizes& sizes, size_t limit, std::ostream& out) {
    PrintRow(out, {"size", "code", "constants", "nobody"}, "memory");
    PrintFirst(sizes.memories, limit, out, [&](const MemorySize& memory) {
        PrintNumbers(
            out, {memory.size, memory.code, memory.constants, memory.nobody},
            inspector::MemoryWord(memory.memory) + ' ' + Span(memory.address, memory.size));
    });
    uint64_t code = 0, constants = 0, nobody = 0;
    for (const MemorySize& memory : sizes.memories) {
        code += memory.code;
        constants += memory.constants;
        nobody += memory.nobody;
    }
    PrintRule(out, 4);
    PrintNumbers(out, {sizes.image, code, constants, nobody}, "the image");
}

void PrintFunctions(const Fst& fst, const Sizes& sizes, size_t limit, std::ostream& out) {
    PrintRow(out, {"size", "code", "lines"}, "function");
    uint64_t code = sizes.code_outside_functions;
    for (const FunctionSize& function : sizes.functions) code += function.code;
    PrintFirst(sizes.functions, limit, out, [&](const FunctionSize& function) {
        const auto number = inspector::FunctionSymbol(fst, function.record);
        const auto symbol =
            number ? inspector::ReadEntry<SYMINFO>(fst, inspector::SYMBOLS, *number) : std::nullopt;
        PrintNumbers(out, {function.record.size, function.code, function.lines},
                     (symbol ? NameText(fst, symbol->name_offs) : "?") + "  " +
                         Span(function.record.address, function.record.size) + "  " +
                         ModuleName(fst, function.record.module));
    });
    PrintNumbers(out, {0, sizes.code_outside_functions, 0}, "(outside of functions)");
    PrintRule(out, 2);
    PrintNumbers(out, {0, code}, "the code of modules");
}

void PrintVariables(const Fst& fst, const Sizes& sizes, size_t limit, std::ostream& out) {
    PrintRow(out, {"size", "constants", "data"}, "variable");
    uint64_t constants = 0, data = 0;
    for (const VariableSize& variable : sizes.variables) {
        constants += variable.constants;
        data += variable.data;
    }
    PrintFirst(sizes.variables, limit, out, [&](const VariableSize& variable) {
        const SYMINFO& record = variable.symbol.record;
        const std::string name(inspector::NameAt(fst, record.name_offs).value_or("?"));
        PrintNumbers(out, {record.size, variable.constants, variable.data},
                     Printable(inspector::Declaration(fst, record.type_index, name)) + "  " +
                         HexText(record.value) + "  " + ModuleName(fst, record.module));
    });
    PrintRule(out, 3);
    PrintNumbers(out, {0, constants, data}, "the variables");
}

}  // namespace

void PrintSizes(const Fst& fst, const Sizes& sizes, size_t limit, std::ostream& out) {
    PrintModules(fst, sizes, limit, out);
    out << '\n';
    PrintMemories(sizes, limit, out);
    out << '\n';
    PrintFunctions(fst, sizes, limit, out);
    out << '\n';
    PrintVariables(fst, sizes, limit, out);
}

}  // namespace scan695::ask
