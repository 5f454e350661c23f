// Where an address is: memory, module, function, blocks, line, and what lives there. The answers
// come from the indexes of the file by binary search.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ask/cover_index.h"
#include "ask/statics.h"

namespace scan695::ask {

struct Block {
    uint32_t number;
    BLOCKINFO record;
};

struct Line {
    uint32_t number;
    LINEINFO record;
};

// A variable of a block and where it is kept at an address; without a location list for as long as
// its block lives.
struct LiveVariable {
    Symbol symbol;
    std::optional<LOCINFO> location;
};

struct Place {
    uint32_t address = 0;
    std::optional<size_t> code;             // number of the block of the image
    std::optional<RANGEINFO> range;         // tells the module
    std::vector<Block> blocks;              // innermost first
    std::optional<Block> function;          // the innermost of them that is one
    std::optional<Symbol> function_symbol;  // its symbol
    std::optional<Symbol> symbol;           // without a function: the variable or label
    std::optional<Line> line;
};

class Places {
  public:
    // The file must live longer.
    explicit Places(const Fst& fst) : fst_(fst) {}

    Place At(uint32_t address);

    // The variables of the blocks of a place that are alive there, in the order of their records.
    std::vector<LiveVariable> VariablesAt(const Place& place);

    // The last line of the module whose address is not above this one.
    std::optional<Line> LineAt(uint32_t address, int64_t module) const;

    // The block's function: itself or what it is nested in.
    std::optional<Block> FunctionOf(int32_t block) const;

    // The block of a function symbol; nothing for other symbols.
    std::optional<Block> BlockOf(const Symbol& function);

  private:
    std::optional<size_t> CodeAt(uint32_t address);
    std::optional<RANGEINFO> RangeAt(uint32_t address);
    std::vector<Block> BlocksAt(uint32_t address);
    std::optional<Symbol> VariableAt(uint32_t address);
    std::optional<Symbol> LabelAt(uint32_t address, const RANGEINFO& range) const;
    const std::vector<Symbol>& SymbolsOfFunction(uint32_t number);

    const Fst& fst_;
    // What no index of the file tells is worked out when it is first asked for.
    std::optional<std::vector<std::pair<uint32_t, size_t>>> code_;  // address and block
    std::optional<CoverIndex> code_cover_;
    std::optional<bool> ranges_are_sorted_;
    std::optional<CoverIndex> block_cover_;  // in the order of the block address index
    std::optional<std::vector<Symbol>> variables_;
    std::optional<CoverIndex> variable_cover_;
    std::unordered_map<uint32_t, std::optional<uint32_t>> symbols_of_blocks_;
    std::unordered_map<uint32_t, std::vector<Symbol>> function_symbols_;  // all within a function
};

}  // namespace scan695::ask
