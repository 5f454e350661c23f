#include "inspector/rows.h"

#include "inspector/c_text.h"
#include "inspector/lookup.h"
#include "inspector/names.h"

namespace scan695::inspector {

namespace {

Cell Reference(int32_t number) {
    return number == -1 ? Cell{} : NumberCell(number);
}

Cell SourceCell(const Fst& fst, int32_t module) {
    const auto record = module < 0
                            ? std::nullopt
                            : ReadEntry<MODULEINFO>(fst, MODULES, static_cast<uint32_t>(module));
    return record ? NameCell(fst, record->source_offs) : Cell{};
}

// Locations of a variable and adjustments of the stack in a function are told apart here.
std::vector<std::vector<Cells>> Locations(const Fst& fst, const SYMINFO& symbol) {
    std::vector<std::vector<Cells>> details(2);
    const uint32_t count = symbol.locinfo_offs == 0 ? 0 : StoredElements(symbol.nof_locs);
    for (uint32_t i = 0; i < count; ++i) {
        LOCINFO location;
        const uint64_t offset = symbol.locinfo_offs + uint64_t{i} * sizeof location;
        if (!ReadAt(fst, offset, location)) break;
        Cells cells = LocationCells(fst, location);
        if (location.exec_mem_type != 0) {
            details[1].push_back(
                {cells[0], cells[1], NumberCell(static_cast<int32_t>(location.value))});
        } else {
            details[0].push_back(std::move(cells));
        }
    }
    return details;
}

}  // namespace

Cell ValueCell(uint8_t storage_class, uint32_t value) {
    return storage_class == STORAGE_AUTO ? NumberCell(static_cast<int32_t>(value)) : HexCell(value);
}

Cell RegisterCell(const Fst& fst, uint8_t storage_class, uint32_t value) {
    if (storage_class != STORAGE_REGISTER) return {};
    std::string word = RegisterWord(fst.header.processor, value);
    return word.empty() ? Cell{} : TextCell(std::move(word));
}

Cells LocationCells(const Fst& fst, const LOCINFO& location) {
    return {HexCell(location.beg_address),
            location.end_address == OPEN_END ? Cell{} : HexCell(location.end_address),
            TextCell(StorageWord(location.storage_class)),
            TextCell(MemoryWord(location.mem_type)),
            ValueCell(location.storage_class, location.value),
            RegisterCell(fst, location.storage_class, location.value)};
}

Cell NameCell(const Fst& fst, uint32_t offset) {
    const auto name = NameAt(fst, offset);
    return name ? TextCell(std::string(*name)) : Cell{};
}

Cell ModuleNameCell(const Fst& fst, int64_t number) {
    const auto module = number < 0
                            ? std::nullopt
                            : ReadEntry<MODULEINFO>(fst, MODULES, static_cast<uint64_t>(number));
    return module ? NameCell(fst, module->name_offs) : Cell{};
}

void ModuleRows(const Fst& fst, const RowSink& sink) {
    InOrder<MODULEINFO>(fst, MODULE_NAME_INDEX, MODULES,
                        [&](uint32_t number, const MODULEINFO& module) {
                            sink({{NumberCell(number), NameCell(fst, module.name_offs),
                                   TextCell(module.language == LANGUAGE_C ? "C" : "assembler"),
                                   NameCell(fst, module.source_offs),
                                   NumberCell(module.first_symbol), NumberCell(module.nof_symbols),
                                   NumberCell(module.first_line), NumberCell(module.nof_lines)},
                                  {}});
                        });
}

Row SymbolRow(const Fst& fst, uint32_t number, const SYMINFO& symbol) {
    return {{NumberCell(number), NameCell(fst, symbol.name_offs),
             TextCell(StorageWord(symbol.storage_class)), TextCell(MemoryWord(symbol.mem_type)),
             ValueCell(symbol.storage_class, symbol.value),
             RegisterCell(fst, symbol.storage_class, symbol.value), NumberCell(symbol.size),
             Reference(symbol.module), ModuleNameCell(fst, symbol.module), Reference(symbol.block),
             NumberCell(symbol.type_index), TextCell(Declaration(fst, symbol.type_index))},
            Locations(fst, symbol)};
}

void SymbolRows(const Fst& fst, const RowSink& sink) {
    for (const Slice& slice : SymbolSlices(fst)) {
        ForEachSymbol(fst, SYMBOL_NAME_INDEX, slice, [&](uint32_t number, const SYMINFO& symbol) {
            sink(SymbolRow(fst, number, symbol));
        });
    }
}

Row BlockRow(const Fst& fst, uint32_t number, const BLOCKINFO& block) {
    const auto function = FunctionSymbol(fst, block);
    const auto symbol = function ? ReadEntry<SYMINFO>(fst, SYMBOLS, *function) : std::nullopt;
    return {{NumberCell(number), HexCell(block.address), HexCell(block.size),
             TextCell(block.is_function != 0 ? "function" : "block"),
             symbol ? NameCell(fst, symbol->name_offs) : Cell{}, Reference(block.parent),
             Reference(block.module), ModuleNameCell(fst, block.module),
             NumberCell(block.first_symbol), NumberCell(block.nof_symbols)},
            {}};
}

void BlockRows(const Fst& fst, const RowSink& sink) {
    InOrder<BLOCKINFO>(fst, BLOCK_ADDR_INDEX, BLOCKS, [&](uint32_t number, const BLOCKINFO& block) {
        sink(BlockRow(fst, number, block));
    });
}

Row LineRow(const Fst& fst, uint32_t number, const LINEINFO& line) {
    return {
        {NumberCell(number), HexCell(line.address), NumberCell(line.number), Reference(line.module),
         ModuleNameCell(fst, line.module), SourceCell(fst, line.module)},
        {}};
}

void LineRows(const Fst& fst, const RowSink& sink) {
    InOrder<LINEINFO>(fst, GLOBAL_LINE_INDEX, LINES, [&](uint32_t number, const LINEINFO& line) {
        sink(LineRow(fst, number, line));
    });
}

void RangeRows(const Fst& fst, const RowSink& sink) {
    for (uint64_t i = 0; i < UsableEntries(fst, RANGES); ++i) {
        const auto range = *ReadEntry<RANGEINFO>(fst, RANGES, i);
        sink({{NumberCell(static_cast<int64_t>(i)), HexCell(range.address),
               HexCell(range.address + range.length - 1), HexCell(range.length),
               NumberCell(range.module), ModuleNameCell(fst, range.module)},
              {}});
    }
}

void CodeRows(const Fst& fst, const RowSink& sink) {
    for (size_t i = 0; i < fst.code.size(); ++i) {
        const CODEINFO& head = fst.code[i].head;
        sink({{NumberCell(static_cast<int64_t>(i)), TextCell(MemoryWord(head.mem_type)),
               HexCell(head.address), HexCell(head.address + head.length - 1), HexCell(head.length),
               HexCell(static_cast<uint32_t>(fst.code[i].body))},
              {}});
    }
}

}  // namespace scan695::inspector
