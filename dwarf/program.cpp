#include "dwarf/program.h"

#include "inspector/lookup.h"

namespace scan695::dwarf {

namespace {

using inspector::Fst;
using inspector::SectionId;

template <class Record>
std::vector<Record> ReadTable(const Fst& fst, SectionId id) {
    std::vector<Record> records(inspector::UsableEntries(fst, id));
    if (records.empty()) return records;
    std::memcpy(records.data(), fst.bytes.data() + fst.sections[id].offset,
                records.size() * sizeof(Record));
    return records;
}

bool IsUntyped(uint32_t type_index) {
    return type_index == TYPE_VOID || type_index == 32 || type_index == TYPE_LABEL;
}

bool IsFunctionType(const Fst& fst, uint32_t type_index) {
    const auto found = inspector::FindType(fst, type_index);
    return found && found->type.type_tag == TAG_FUNCTION;
}

// A function and its block are told by module and address alone, so several blocks may have one
// symbol.
void MatchFunctions(Program& program) {
    program.function_block.assign(program.symbols.size(), NONE);
    program.block_function.assign(program.blocks.size(), NONE);
    for (uint32_t i = 0; i < program.blocks.size(); ++i) {
        if (program.blocks[i].size == 0) continue;  // never closed
        const auto symbol = inspector::FunctionSymbol(program.fst, program.blocks[i]);
        if (!symbol || *symbol >= program.symbols.size()) continue;
        program.block_function[i] = *symbol;
        if (program.function_block[*symbol] == NONE) program.function_block[*symbol] = i;
    }
}

SymbolKind KindOf(const Program& program, uint32_t number) {
    const SYMINFO& symbol = program.symbols[number];
    if (program.function_block[number] != NONE) return SymbolKind::FUNCTION;
    if (symbol.storage_class == STORAGE_AUTO) return SymbolKind::STACK;
    if (symbol.storage_class == STORAGE_REGISTER || symbol.mem_type == MEM_REGISTER)
        return SymbolKind::REGISTER;
    if (symbol.storage_class > STORAGE_REGISTER) return SymbolKind::OTHER;
    const bool is_bit_memory = symbol.mem_type == MEM_BIT_LOW || symbol.mem_type == MEM_BIT_HIGH;
    if (is_bit_memory && symbol.type_index == TYPE_BIT) return SymbolKind::BIT;
    if (IsUntyped(symbol.type_index) && symbol.locinfo_offs == 0) return SymbolKind::LABEL;
    return IsFunctionType(program.fst, symbol.type_index) ? SymbolKind::FUNCTION
                                                          : SymbolKind::OBJECT;
}

void BuildScopes(Program& program) {
    const size_t scopes = program.ProgramUnit() + size_t{1};
    std::vector<uint32_t> block_keys;
    for (uint32_t i = 0; i < program.blocks.size(); ++i) {
        const BLOCKINFO& block = program.blocks[i];
        const bool has_parent = block.parent >= 0 && static_cast<uint32_t>(block.parent) < i;
        block_keys.push_back(has_parent ? static_cast<uint32_t>(block.parent)
                                        : program.UnitOf(block.module));
    }
    program.scope_blocks = Groups(block_keys, scopes);

    // One group more takes the functions that their blocks stand for.
    std::vector<uint32_t> symbol_keys;
    for (uint32_t i = 0; i < program.symbols.size(); ++i) {
        const SYMINFO& symbol = program.symbols[i];
        const bool has_block =
            symbol.block >= 0 && static_cast<uint32_t>(symbol.block) < program.blocks.size();
        const auto scope =
            has_block ? static_cast<uint32_t>(symbol.block) : program.UnitOf(symbol.module);
        symbol_keys.push_back(program.function_block[i] == NONE ? scope
                                                                : static_cast<uint32_t>(scopes));
    }
    program.scope_symbols = Groups(symbol_keys, scopes + 1);
}

}  // namespace

uint32_t Program::UnitOf(int32_t module) const {
    const bool is_module = module >= 0 && static_cast<uint32_t>(module) < modules.size();
    return is_module ? FirstUnit() + static_cast<uint32_t>(module) : ProgramUnit();
}

Program ReadProgram(const Fst& fst) {
    Program program = {.fst = fst,
                       .modules = ReadTable<MODULEINFO>(fst, inspector::MODULES),
                       .blocks = ReadTable<BLOCKINFO>(fst, inspector::BLOCKS),
                       .symbols = ReadTable<SYMINFO>(fst, inspector::SYMBOLS),
                       .kinds = {},
                       .function_block = {},
                       .block_function = {},
                       .scope_blocks = {},
                       .scope_symbols = {}};
    MatchFunctions(program);
    for (uint32_t i = 0; i < program.symbols.size(); ++i) {
        program.kinds.push_back(KindOf(program, i));
    }
    BuildScopes(program);
    return program;
}

std::string_view NameOf(const Fst& fst, uint32_t offset) {
    return inspector::NameAt(fst, offset).value_or(std::string_view());
}

std::string_view FileNameOf(const Fst& fst, const MODULEINFO& module) {
    const std::string_view source = NameOf(fst, module.source_offs);
    return source.empty() ? NameOf(fst, module.name_offs) : source;
}

}  // namespace scan695::dwarf
