// What changed between two programs. Things are matched by name: a global symbol by its own, a
// static one together with those of its module and function, a layout by its tag, a module by its
// name. So record numbers, type indexes and the order of anything do not count. Variables in
// registers and on the stack are not compared; what their change does to the code is.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "ask/sizes.h"

namespace scan695::ask {

// One side of a symbol.
struct DiffSymbol {
    Symbol symbol;
    std::string module;
    std::string function;  // that it lies in; empty outside of functions
    uint32_t size = 0;     // of a function that of its block
};

struct SymbolChange {
    std::optional<DiffSymbol> before;  // without it the symbol has come
    std::optional<DiffSymbol> after;   // without it the symbol is gone
    bool is_moved = false;
    bool is_resized = false;
    bool is_retyped = false;
    uint64_t bytes = 0;  // of the image under it that differ; all of them where the size changed
};

// Layouts of one kind and tag, told by the types of each side that the other does not have.
struct LayoutChange {
    std::vector<uint32_t> before;
    std::vector<uint32_t> after;
};

struct ModuleTotals {
    Bytes bytes;
    uint64_t lines = 0;
};

struct ModuleChange {
    std::string name;
    std::optional<ModuleTotals> before;
    std::optional<ModuleTotals> after;
};

struct Diff {
    std::vector<SymbolChange> symbols;
    std::vector<LayoutChange> layouts;
    std::vector<ModuleChange> modules;
    uint64_t image_before = 0;
    uint64_t image_after = 0;
    bool is_rest_changed = false;  // the image outside of functions and variables

    bool IsEmpty() const {
        return symbols.empty() && layouts.empty() && modules.empty() && !is_rest_changed &&
               image_before == image_after;
    }
};

Diff Compare(const Fst& before, const Fst& after);

void PrintDiff(const Fst& before, const Fst& after, const Diff& diff, std::ostream& out);
void WriteDiff(const Fst& before, const Fst& after, const Diff& diff, inspector::JsonWriter& json);

}  // namespace scan695::ask
