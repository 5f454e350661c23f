#include "inspector/slices.h"

namespace scan695::inspector {

std::vector<Slice> SymbolSlices(const Fst& fst) {
    std::vector<Slice> slices;
    uint64_t entry = 0;
    const auto add = [&](uint32_t first, uint32_t count, int64_t module, int64_t block) {
        if (count == 0) return;
        slices.push_back(
            {entry, first, count, static_cast<int32_t>(module), static_cast<int32_t>(block)});
        entry += count;
    };
    add(0, fst.header.nof_global_symbols, -1, -1);
    for (uint64_t i = 0; i < UsableEntries(fst, MODULES); ++i) {
        const auto module = ReadEntry<MODULEINFO>(fst, MODULES, i);
        add(module->first_symbol, module->nof_symbols, static_cast<int64_t>(i), -1);
    }
    for (uint64_t i = 0; i < UsableEntries(fst, BLOCKS); ++i) {
        const auto block = ReadEntry<BLOCKINFO>(fst, BLOCKS, i);
        add(block->first_symbol, block->nof_symbols, block->module, static_cast<int64_t>(i));
    }
    return slices;
}

std::vector<Slice> LineSlices(const Fst& fst) {
    std::vector<Slice> slices;
    uint64_t entry = 0;
    for (uint64_t i = 0; i < UsableEntries(fst, MODULES); ++i) {
        const auto module = ReadEntry<MODULEINFO>(fst, MODULES, i);
        if (module->nof_lines == 0) continue;
        slices.push_back(
            {entry, module->first_line, module->nof_lines, static_cast<int32_t>(i), -1});
        entry += module->nof_lines;
    }
    return slices;
}

}  // namespace scan695::inspector
