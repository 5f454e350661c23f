// The symbol table of the ELF file, apart from its encoding.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "dwarf/program.h"
#include "elf/image.h"

namespace scan695::elf {

enum class SymbolType { LABEL, OBJECT, FUNCTION, FILE };

inline constexpr size_t NO_STRETCH = SIZE_MAX;

struct Symbol {
    std::string_view name;
    uint32_t value;
    uint32_t size;
    SymbolType type;
    bool is_global;
    size_t stretch;  // the one that the symbol lies in, or NO_STRETCH
};

// Every symbol that has an address, local ones first: those of no module, then those of each module
// behind a symbol for its file.
std::vector<Symbol> BuildSymbols(const dwarf::Program& program, const std::vector<Stretch>& image);

// The address of the start symbol, else that of the header, else 0.
uint32_t EntryAddress(const dwarf::Program& program);

}  // namespace scan695::elf
