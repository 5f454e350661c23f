#include "inspector/lookup.h"

#include <algorithm>
#include <tuple>

namespace scan695::inspector {

namespace {

constexpr int MAX_ATTRIBUTES = 64;    // over one another
constexpr uint64_t MAX_TWINS = 1000;  // code symbols at one address that are looked at

// The code symbol of the module at an address, in a slice of the symbol address index. One with a
// type is a function; a label beside it has none.
std::optional<uint32_t> CodeSymbolAt(const Fst& fst, const Slice& slice, uint32_t address,
                                     int32_t module, bool has_type) {
    const int8_t memory = MEM_CODE;
    uint64_t end = slice.entry + slice.count;
    uint64_t at = LowerBound(fst, SYMBOL_ADDR_INDEX, slice.entry, end, [&](uint32_t number) {
        const auto symbol = ReadEntry<SYMINFO>(fst, SYMBOLS, number);
        return symbol && std::tie(symbol->mem_type, symbol->value) < std::tie(memory, address);
    });
    end = std::min(end, at + MAX_TWINS);
    for (; at < end; ++at) {
        const auto number = ReadEntry<uint32_t>(fst, SYMBOL_ADDR_INDEX, at);
        const auto symbol = number ? ReadEntry<SYMINFO>(fst, SYMBOLS, *number) : std::nullopt;
        if (!symbol || symbol->mem_type != memory || symbol->value != address) break;
        if (symbol->module == module && IsRecordType(symbol->type_index) == has_type) return number;
    }
    return {};
}

}  // namespace

std::optional<FoundType> FindType(const Fst& fst, uint32_t type_index) {
    if (!IsRecordType(type_index)) return {};
    // Numbers and indexes mostly run in step.
    const uint32_t guess = type_index - FIRST_TYPE_INDEX;
    if (const auto type = ReadEntry<TYPEINFO>(fst, TYPES, guess);
        type && type->here_type_index == type_index) {
        return FoundType{guess, *type};
    }
    const uint64_t end = UsableEntries(fst, TYPE_INDEX);
    const uint64_t at = LowerBound(fst, TYPE_INDEX, 0, end, [&](uint32_t number) {
        const auto type = ReadEntry<TYPEINFO>(fst, TYPES, number);
        return type && type->here_type_index < type_index;
    });
    const auto number = ReadEntry<uint32_t>(fst, TYPE_INDEX, at);
    if (!number) return {};
    const auto type = ReadEntry<TYPEINFO>(fst, TYPES, *number);
    if (!type || type->here_type_index != type_index) return {};
    return FoundType{*number, *type};
}

std::optional<uint32_t> SizeOfType(const Fst& fst, uint32_t type_index) {
    for (int depth = 0; depth < MAX_ATTRIBUTES; ++depth) {
        if (type_index < BASIC_SIZES_COUNT) {
            const auto size = ReadEntry<uint8_t>(fst, BASIC_SIZES, type_index);
            return size ? std::optional<uint32_t>(*size) : std::nullopt;
        }
        const auto found = FindType(fst, type_index);
        if (!found) return {};
        const auto& u = found->type.u;
        switch (found->type.type_tag) {
            case TAG_POINTER:
                return u.pointer.ptr_size;
            case TAG_ARRAY:
                return u.array.size;
            case TAG_STRUCT:
            case TAG_UNION:
                return u.structunion.size;
            case TAG_ENUMERATION:
                type_index = u.enumeration.type_index;
                break;
            case TAG_ATTRIBUTE:
                type_index = u.pointer.type_index;
                break;
            case TAG_NONE:
            case TAG_BITFIELD:
            case TAG_FUNCTION:
                return {};
        }
    }
    return {};
}

Slice GlobalSlice(const Fst& fst) {
    return {0, 0, fst.header.nof_global_symbols, -1, -1};
}

Slice ModuleSlice(const Fst& fst, uint32_t module) {
    const auto record = ReadEntry<MODULEINFO>(fst, MODULES, module);
    if (!record) return {};
    return {record->first_symbol, record->first_symbol, record->nof_symbols,
            static_cast<int32_t>(module), -1};
}

Slice BlockSlice(const Fst& fst, uint32_t block) {
    const auto record = ReadEntry<BLOCKINFO>(fst, BLOCKS, block);
    if (!record) return {};
    return {record->first_symbol, record->first_symbol, record->nof_symbols, record->module,
            static_cast<int32_t>(block)};
}

bool HasAllSymbols(const Fst& fst) {
    return fst.sections[SYMBOLS].entries == fst.header.nof_all_symbols;
}

std::optional<uint32_t> FunctionSymbol(const Fst& fst, const BLOCKINFO& block) {
    if (block.is_function == 0 || block.module < 0) return {};
    // Global and module symbols stand in front of those of blocks, so they are there in any case.
    const Slice slices[] = {GlobalSlice(fst),
                            ModuleSlice(fst, static_cast<uint32_t>(block.module))};
    for (const bool has_type : {true, false}) {
        for (const Slice& slice : slices) {
            const auto found = CodeSymbolAt(fst, slice, block.address, block.module, has_type);
            if (found) return found;
        }
    }
    return {};
}

}  // namespace scan695::inspector
