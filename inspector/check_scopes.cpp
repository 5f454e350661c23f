#include <algorithm>

#include "inspector/checks.h"

namespace scan695::inspector {

namespace {

bool IsModule(const Fst& fst, int32_t number) {
    return number >= -1 && int64_t{number} < int64_t{fst.header.nof_modules};
}

// Compares the records that a scope claims with those up to the beginning of the next scope.
// `count` is that number cut to the width of its field.
void CheckClaim(const char* what, uint64_t number, const char* records, uint64_t first,
                uint64_t next, uint64_t count, uint64_t mask, Findings& findings) {
    if (next < first || ((next - first) & mask) != count) {
        findings.Add("%s %llu: %llu %s from %llu on, but the next scope begins at %llu", what,
                     Wide(number), Wide(count), records, Wide(first), Wide(next));
    }
}

void CheckModules(const Fst& fst, Findings& findings) {
    const FstHeader& header = fst.header;
    const uint64_t usable = UsableEntries(fst, MODULES);
    const uint64_t symbols_end = uint64_t{header.nof_global_symbols} + header.nof_module_symbols;
    if (header.nof_modules == 0 && header.nof_module_symbols != 0) {
        findings.Add("header: %u module symbols without modules", header.nof_module_symbols);
    }
    int longest_name = 0;
    for (uint64_t i = 0; i < usable; ++i) {
        const auto module = *ReadEntry<MODULEINFO>(fst, MODULES, i);
        const auto next = ReadEntry<MODULEINFO>(fst, MODULES, i + 1);
        if (i == 0 && module.first_symbol != header.nof_global_symbols) {
            findings.Add("module 0: first symbol is %u, expected %u", module.first_symbol,
                         header.nof_global_symbols);
        }
        if (next || i + 1 == header.nof_modules) {
            CheckClaim("module", i, "symbols", module.first_symbol,
                       next ? next->first_symbol : symbols_end, module.nof_symbols, 0xFFFFFFFF,
                       findings);
            CheckClaim("module", i, "lines", module.first_line,
                       next ? next->first_line : header.nof_lines, module.nof_lines, 0xFFFF,
                       findings);
        }
        longest_name =
            std::max(longest_name, CheckName(fst, module.name_offs, "module", i, findings));
        if (module.source_offs != 0)
            CheckName(fst, module.source_offs, "source of module", i, findings);
        if (module.language != LANGUAGE_C && module.language != LANGUAGE_ASM) {
            findings.Add("module %llu: language is %d", Wide(i), module.language);
        }
        if (module.reserved != 0) findings.Add("module %llu: reserved byte is not zero", Wide(i));
    }
    if (usable == header.nof_modules && header.max_module_name != longest_name) {
        findings.Add("header: max_module_name is %d, the longest name has %d characters",
                     header.max_module_name, longest_name);
    }
}

void CheckBlock(const Fst& fst, uint64_t number, const BLOCKINFO& block, Findings& findings) {
    if (block.parent != -1) {
        const bool is_lower = block.parent >= 0 && static_cast<uint64_t>(block.parent) < number;
        if (!is_lower) {
            findings.Add("block %llu: parent is %d", Wide(number), block.parent);
        } else if (ReadEntry<BLOCKINFO>(fst, BLOCKS, static_cast<uint64_t>(block.parent))->module !=
                   block.module) {
            findings.Add("block %llu: parent %d is of another module", Wide(number), block.parent);
        }
    }
    if (!IsModule(fst, block.module)) {
        findings.Add("block %llu: no module %d", Wide(number), block.module);
    }
    if (block.size == 0 && (block.address != 0xFFFFFFFF || block.parent != -1)) {
        findings.Add("block %llu: empty, but with an address or a parent", Wide(number));
    }
    if (block.is_function > 1) {
        findings.Add("block %llu: is_function is %u", Wide(number), block.is_function);
    }
    if (block.reserved != 0) findings.Add("block %llu: reserved byte is not zero", Wide(number));
}

// The largest number of symbols that are visible in a block, as the writer adds them up: in sums of
// 16 bits. Empty blocks have lost their parent, so with one of them there is nothing to compare.
void CheckMaxBlockSymbols(const Fst& fst, Findings& findings) {
    if (UsableEntries(fst, BLOCKS) != fst.header.nof_blocks) return;
    std::vector<uint32_t> visible;
    int16_t largest = 0;
    for (uint64_t i = 0; i < fst.header.nof_blocks; ++i) {
        const auto block = *ReadEntry<BLOCKINFO>(fst, BLOCKS, i);
        const bool has_parent = block.parent >= 0 && static_cast<uint64_t>(block.parent) < i;
        if (block.size == 0 || (block.parent != -1 && !has_parent)) return;
        visible.push_back(block.nof_symbols +
                          (has_parent ? visible[static_cast<size_t>(block.parent)] : 0));
        largest = std::max(largest, static_cast<int16_t>(visible.back()));
    }
    if (fst.header.max_block_symbols != largest) {
        findings.Add("header: max_block_symbols is %d, expected %d", fst.header.max_block_symbols,
                     largest);
    }
}

void CheckBlocks(const Fst& fst, Findings& findings) {
    const FstHeader& header = fst.header;
    const uint64_t begin = uint64_t{header.nof_global_symbols} + header.nof_module_symbols;
    if (header.nof_blocks == 0 && header.nof_block_symbols != 0) {
        findings.Add("header: %u block symbols without blocks", header.nof_block_symbols);
    }
    for (uint64_t i = 0; i < UsableEntries(fst, BLOCKS); ++i) {
        const auto block = *ReadEntry<BLOCKINFO>(fst, BLOCKS, i);
        const auto next = ReadEntry<BLOCKINFO>(fst, BLOCKS, i + 1);
        if (i == 0 && block.first_symbol != begin) {
            findings.Add("block 0: first symbol is %u, expected %llu", block.first_symbol,
                         Wide(begin));
        }
        if (next || i + 1 == header.nof_blocks) {
            CheckClaim("block", i, "symbols", block.first_symbol,
                       next ? next->first_symbol : begin + header.nof_block_symbols,
                       block.nof_symbols, 0xFFFF, findings);
        }
        CheckBlock(fst, i, block, findings);
    }
    CheckMaxBlockSymbols(fst, findings);
}

void CheckLines(const Fst& fst, Findings& findings) {
    const uint64_t modules = UsableEntries(fst, MODULES);
    uint64_t next_module = 0;
    for (uint64_t i = 0; i < UsableEntries(fst, LINES); ++i) {
        const auto line = *ReadEntry<LINEINFO>(fst, LINES, i);
        while (next_module < modules &&
               ReadEntry<MODULEINFO>(fst, MODULES, next_module)->first_line <= i) {
            ++next_module;
        }
        const int64_t owner = static_cast<int64_t>(next_module) - 1;
        if (modules == fst.header.nof_modules && line.module != owner) {
            findings.Add("line %llu: module is %d, expected %lld", Wide(i), line.module,
                         static_cast<long long>(owner));
        }
        if (line.reserved != 0) findings.Add("line %llu: reserved bytes are not zero", Wide(i));
    }
}

}  // namespace

void CheckScopes(const Fst& fst, Findings& findings) {
    CheckModules(fst, findings);
    CheckBlocks(fst, findings);
    CheckLines(fst, findings);
}

}  // namespace scan695::inspector
