// The program that an FST file describes, as a tree of scopes: units with their blocks and symbols.
// What a damaged file refers to and does not have counts as not referred to.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "dwarf/groups.h"
#include "inspector/reader.h"

namespace scan695::dwarf {

enum class SymbolKind {
    FUNCTION,  // has code at its address
    LABEL,     // an address without a type
    OBJECT,
    BIT,  // a bit in bit memory: its value is a bit number, not an address
    STACK,
    REGISTER,
    OTHER,  // of a storage class that nobody knows
};

inline constexpr uint32_t NONE = 0xFFFFFFFF;

// Scopes are numbered: first the blocks, then the modules, last the program, which holds what is of
// no module. A unit is the scope of a module or of the program.
struct Program {
    const inspector::Fst& fst;
    std::vector<MODULEINFO> modules;
    std::vector<BLOCKINFO> blocks;
    std::vector<SYMINFO> symbols;
    std::vector<SymbolKind> kinds;         // of the symbols
    std::vector<uint32_t> function_block;  // by symbol: the first block of a function, or NONE
    std::vector<uint32_t> block_function;  // by block: its symbol, or NONE
    Groups scope_blocks;
    Groups scope_symbols;  // but for functions with a block

    uint32_t FirstUnit() const { return static_cast<uint32_t>(blocks.size()); }
    uint32_t ProgramUnit() const { return static_cast<uint32_t>(blocks.size() + modules.size()); }
    uint32_t UnitOf(int32_t module) const;
    bool HasContents(uint32_t scope) const {
        return !scope_blocks[scope].empty() || !scope_symbols[scope].empty();
    }
};

Program ReadProgram(const inspector::Fst& fst);

// Empty where there is no name.
std::string_view NameOf(const inspector::Fst& fst, uint32_t offset);
// Of the module's source file, or of the module where it has none.
std::string_view FileNameOf(const inspector::Fst& fst, const MODULEINFO& module);

// True for a symbol that stands for an address in memory.
inline bool HasAddress(SymbolKind kind) {
    return kind == SymbolKind::FUNCTION || kind == SymbolKind::LABEL || kind == SymbolKind::OBJECT;
}

}  // namespace scan695::dwarf
