#include "elf/symbols.h"

#include <algorithm>

#include "inspector/lookup.h"

namespace scan695::elf {

namespace {

using dwarf::NONE;
using dwarf::Program;
using dwarf::SymbolKind;

// Finds the stretch of an address. One of the symbol's own memory goes before others; memories are
// few, so a linear walk through them costs nothing.
class StretchFinder {
  public:
    explicit StretchFinder(const std::vector<Stretch>& image) : image_(image) {
        for (size_t i = 0; i < image.size(); ++i) {
            const uint8_t memory = image[i].memory;
            const auto at = std::find_if(
                memories_.begin(), memories_.end(),
                [&](const auto& numbers) { return image[numbers[0]].memory == memory; });
            if (at == memories_.end()) {
                memories_.push_back({i});
            } else {
                at->push_back(i);
            }
        }
    }

    size_t Find(uint32_t address, int8_t memory) const {
        size_t found = NO_STRETCH;
        for (const std::vector<size_t>& numbers : memories_) {
            const size_t stretch = FindIn(numbers, address);
            if (stretch == NO_STRETCH) continue;
            if (image_[stretch].memory == static_cast<uint8_t>(memory)) return stretch;
            if (found == NO_STRETCH) found = stretch;
        }
        return found;
    }

  private:
    size_t FindIn(const std::vector<size_t>& numbers, uint32_t address) const {
        const auto behind = std::upper_bound(
            numbers.begin(), numbers.end(), address,
            [&](uint32_t value, size_t number) { return value < image_[number].address; });
        if (behind == numbers.begin()) return NO_STRETCH;
        const size_t number = *std::prev(behind);
        return address - image_[number].address < image_[number].size ? number : NO_STRETCH;
    }

    const std::vector<Stretch>& image_;
    std::vector<std::vector<size_t>> memories_;  // the stretches of each, by address
};

uint32_t SizeOf(const Program& program, uint32_t number) {
    const uint32_t block = program.function_block[number];
    if (block != NONE) return program.blocks[block].size;
    if (program.kinds[number] != SymbolKind::OBJECT) return 0;
    return inspector::SizeOfType(program.fst, program.symbols[number].type_index).value_or(0);
}

SymbolType TypeOf(SymbolKind kind) {
    if (kind == SymbolKind::FUNCTION) return SymbolType::FUNCTION;
    return kind == SymbolKind::OBJECT ? SymbolType::OBJECT : SymbolType::LABEL;
}

bool IsStartSymbol(const Program& program, const SYMINFO& symbol) {
    if (symbol.module != -1 || symbol.block != -1 || symbol.type_index != TYPE_VOID) return false;
    const bool is_c166 = program.fst.header.processor == PROCESSOR_C166;
    const std::string_view name = dwarf::NameOf(program.fst, symbol.name_offs);
    return (is_c166 && symbol.storage_class == STORAGE_GLOBAL && name == "_CSTART_TASK") ||
           (symbol.storage_class == STORAGE_STATIC && name == "START");
}

}  // namespace

std::vector<Symbol> BuildSymbols(const Program& program, const std::vector<Stretch>& image) {
    const StretchFinder finder(image);
    const uint32_t first = program.FirstUnit();
    std::vector<uint32_t> units;  // of the local symbols, less `first`; global ones behind them
    const uint32_t globals = program.ProgramUnit() - first + 1;
    for (const SYMINFO& symbol : program.symbols) {
        const bool is_global = symbol.storage_class == STORAGE_GLOBAL;
        units.push_back(is_global ? globals : program.UnitOf(symbol.module) - first);
    }
    const dwarf::Groups groups(units, globals + size_t{1});

    std::vector<Symbol> symbols;
    const auto add = [&](uint32_t unit) {
        for (const uint32_t number : groups[unit]) {
            const SYMINFO& symbol = program.symbols[number];
            const SymbolKind kind = program.kinds[number];
            if (!dwarf::HasAddress(kind)) continue;
            symbols.push_back({dwarf::NameOf(program.fst, symbol.name_offs), symbol.value,
                               SizeOf(program, number), TypeOf(kind), unit == globals,
                               finder.Find(symbol.value, symbol.mem_type)});
        }
    };
    add(globals - 1);  // local ones of no module
    for (uint32_t module = 0; module < program.modules.size(); ++module) {
        symbols.push_back({dwarf::FileNameOf(program.fst, program.modules[module]), 0, 0,
                           SymbolType::FILE, false, NO_STRETCH});
        add(module);
    }
    add(globals);
    return symbols;
}

uint32_t EntryAddress(const Program& program) {
    for (const SYMINFO& symbol : program.symbols) {
        if (IsStartSymbol(program, symbol)) return symbol.value;
    }
    const FstHeader& header = program.fst.header;
    return header.has_start_address != 0 ? header.start_address : 0;
}

}  // namespace scan695::elf
