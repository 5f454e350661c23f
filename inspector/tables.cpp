#include "inspector/tables.h"

#include "inspector/names.h"

namespace scan695::inspector {

namespace {

Cell Text(std::string text) {
    return {Cell::TEXT, std::move(text), 0};
}
Cell Number(int64_t number) {
    return {Cell::NUMBER, {}, number};
}
Cell Hex(uint32_t number) {
    return {Cell::HEX, {}, number};
}
Cell Nothing() {
    return {};
}
Cell Reference(int32_t number) {
    return number == -1 ? Nothing() : Number(number);
}

Cell Name(const Fst& fst, uint32_t offset) {
    return offset == 0 ? Nothing() : Text(NameText(fst, offset));
}

Cell ModuleName(const Fst& fst, int64_t number) {
    if (number == -1) return Nothing();
    const auto module = ReadEntry<MODULEINFO>(fst, MODULES, static_cast<uint64_t>(number));
    return module ? Name(fst, module->name_offs) : Text("?" + std::to_string(number));
}

// Calls `use(number, record)` for the records of a table in the order of an index. Entries that
// name no record are left out.
template <class Record, class Use>
void InOrder(const Fst& fst, SectionId index, SectionId table, Use use) {
    for (uint64_t i = 0; i < UsableEntries(fst, index); ++i) {
        const uint32_t number = *ReadEntry<uint32_t>(fst, index, i);
        if (const auto record = ReadEntry<Record>(fst, table, number)) use(number, *record);
    }
}

void ModuleRows(const Fst& fst, const RowSink& sink) {
    InOrder<MODULEINFO>(
        fst, MODULE_NAME_INDEX, MODULES, [&](uint32_t number, const MODULEINFO& module) {
            sink({{Number(number), Name(fst, module.name_offs),
                   Text(module.language == LANGUAGE_C ? "C" : "asm"), Name(fst, module.source_offs),
                   Number(module.first_symbol), Number(module.nof_symbols),
                   Number(module.first_line), Number(module.nof_lines)},
                  {}});
        });
}

std::vector<Cells> Locations(const Fst& fst, const SYMINFO& symbol) {
    std::vector<Cells> details;
    const uint32_t count = symbol.locinfo_offs == 0 ? 0 : StoredElements(symbol.nof_locs);
    for (uint32_t i = 0; i < count; ++i) {
        LOCINFO location;
        const uint64_t offset = symbol.locinfo_offs + uint64_t{i} * sizeof location;
        if (!ReadAt(fst, offset, location)) break;
        const bool is_adjustment = location.exec_mem_type != 0;  // of the stack, in a function
        details.push_back({Hex(location.beg_address), Hex(location.end_address),
                           Text(is_adjustment ? "adjust" : StorageWord(location.storage_class)),
                           Text(MemoryWord(location.mem_type)), Hex(location.value)});
    }
    return details;
}

void SymbolRows(const Fst& fst, const RowSink& sink) {
    InOrder<SYMINFO>(fst, SYMBOL_NAME_INDEX, SYMBOLS, [&](uint32_t number, const SYMINFO& symbol) {
        sink({{Number(number), Name(fst, symbol.name_offs), Text(StorageWord(symbol.storage_class)),
               Text(MemoryWord(symbol.mem_type)), Hex(symbol.value), Number(symbol.size),
               ModuleName(fst, symbol.module), Reference(symbol.block), Number(symbol.type_index),
               Text(TypeText(fst, symbol.type_index))},
              Locations(fst, symbol)});
    });
}

std::vector<Cells> Fields(const Fst& fst, uint32_t offset, uint32_t count, bool has_types) {
    std::vector<Cells> details;
    for (uint32_t i = 0; offset != 0 && i < count; ++i) {
        FIELDINFO field;
        if (!ReadAt(fst, offset + uint64_t{i} * sizeof field, field)) break;
        const bool is_parameter = field.name_offs == 0;
        details.push_back({Name(fst, field.name_offs),
                           is_parameter ? Nothing() : Number(static_cast<int32_t>(field.value)),
                           has_types ? Text(TypeText(fst, field.type_index)) : Nothing()});
    }
    return details;
}

Row TypeRow(const Fst& fst, uint32_t number, const TYPEINFO& type) {
    const auto& u = type.u;
    Cell name, size, count, spec, displacement, bits;
    std::vector<Cells> fields;
    switch (type.type_tag) {
        case TAG_FUNCTION:
            count = Number(u.function.nof_params);
            spec = Hex(u.function.spec);
            fields = Fields(fst, u.function.params_offset, u.function.nof_params, true);
            break;
        case TAG_ARRAY:
            size = Number(u.array.size);
            count = Number(u.array.nof_elem);
            break;
        case TAG_STRUCT:
        case TAG_UNION:
            name = Name(fst, u.structunion.name_offs);
            size = Number(u.structunion.size);
            count = Number(u.structunion.nof_elem);
            fields =
                Fields(fst, u.structunion.field_offs, StoredElements(u.structunion.nof_elem), true);
            break;
        case TAG_ENUMERATION:
            name = Name(fst, u.enumeration.name_offs);
            count = Number(u.enumeration.nof_elem);
            fields = Fields(fst, u.enumeration.field_offs, StoredElements(u.enumeration.nof_elem),
                            false);
            break;
        case TAG_BITFIELD:
            displacement = Number(u.bits.displacement);
            bits = Number(u.bits.nof_bits);
            break;
        case TAG_POINTER:
            size = Number(u.pointer.ptr_size);
            spec = Hex(u.pointer.spec);
            break;
        case TAG_ATTRIBUTE:
            spec = Hex(u.pointer.spec);
            break;
        default:
            break;
    }
    return {{Number(number), Number(type.here_type_index), Text(TypeTagWord(type.type_tag)), name,
             size, count, spec, displacement, bits, Text(TypeText(fst, type.here_type_index))},
            std::move(fields)};
}

void TypeRows(const Fst& fst, const RowSink& sink) {
    InOrder<TYPEINFO>(fst, TYPE_INDEX, TYPES, [&](uint32_t number, const TYPEINFO& type) {
        sink(TypeRow(fst, number, type));
    });
}

void BlockRows(const Fst& fst, const RowSink& sink) {
    InOrder<BLOCKINFO>(fst, BLOCK_ADDR_INDEX, BLOCKS, [&](uint32_t number, const BLOCKINFO& block) {
        sink(
            {{Number(number), Hex(block.address), Hex(block.size),
              Text(block.is_function != 0 ? "function" : "block"), Reference(block.parent),
              ModuleName(fst, block.module), Number(block.first_symbol), Number(block.nof_symbols)},
             {}});
    });
}

void LineRows(const Fst& fst, const RowSink& sink) {
    InOrder<LINEINFO>(fst, GLOBAL_LINE_INDEX, LINES, [&](uint32_t number, const LINEINFO& line) {
        Cell source;
        if (line.module != -1) {
            const auto module =
                ReadEntry<MODULEINFO>(fst, MODULES, static_cast<uint32_t>(line.module));
            if (module) source = Name(fst, module->source_offs);
        }
        sink({{Number(number), Hex(line.address), Number(line.number), ModuleName(fst, line.module),
               source},
              {}});
    });
}

void RangeRows(const Fst& fst, const RowSink& sink) {
    for (uint64_t i = 0; i < UsableEntries(fst, RANGES); ++i) {
        const auto range = *ReadEntry<RANGEINFO>(fst, RANGES, i);
        sink({{Number(static_cast<int64_t>(i)), Hex(range.address),
               Hex(range.address + range.length - 1), Hex(range.length),
               ModuleName(fst, range.module)},
              {}});
    }
}

void CodeRows(const Fst& fst, const RowSink& sink) {
    for (size_t i = 0; i < fst.code.size(); ++i) {
        const CodeBlock& block = fst.code[i];
        sink({{Number(static_cast<int64_t>(i)), Text(MemoryWord(block.head.mem_type)),
               Hex(block.head.address), Hex(block.head.address + block.head.length - 1),
               Hex(block.head.length), Hex(static_cast<uint32_t>(block.body))},
              {}});
    }
}

const Table TABLES[] = {
    {"modules",
     {{"record", 6},
      {"name", -16},
      {"language", -8},
      {"source", -16},
      {"first_symbol", 12},
      {"nof_symbols", 11},
      {"first_line", 10},
      {"nof_lines", 9}},
     nullptr,
     {},
     ModuleRows},
    {"symbols",
     {{"record", 6},
      {"name", -20},
      {"storage", -8},
      {"memory", -8},
      {"value", 10},
      {"size", 6},
      {"module", -12},
      {"block", 5},
      {"type_index", 10},
      {"type", -1}},
     "locations",
     {"begin", "end", "storage", "memory", "value"},
     SymbolRows},
    {"types",
     {{"record", 6},
      {"type_index", 10},
      {"kind", -11},
      {"name", -16},
      {"size", 6},
      {"count", 5},
      {"spec", 5},
      {"displacement", 12},
      {"bits", 4},
      {"type", -1}},
     "fields",
     {"name", "value", "type"},
     TypeRows},
    {"blocks",
     {{"record", 6},
      {"address", 10},
      {"size", 8},
      {"kind", -8},
      {"parent", 6},
      {"module", -16},
      {"first_symbol", 12},
      {"nof_symbols", 11}},
     nullptr,
     {},
     BlockRows},
    {"lines",
     {{"record", 6}, {"address", 10}, {"number", 6}, {"module", -16}, {"source", -16}},
     nullptr,
     {},
     LineRows},
    {"ranges",
     {{"record", 6}, {"address", 10}, {"last", 10}, {"length", 10}, {"module", -16}},
     nullptr,
     {},
     RangeRows},
    {"code",
     {{"record", 6}, {"memory", -8}, {"address", 10}, {"last", 10}, {"length", 10}, {"offset", 10}},
     nullptr,
     {},
     CodeRows},
};

}  // namespace

const Table* FindTable(const std::string& name) {
    for (const Table& table : TABLES) {
        if (name == table.name) return &table;
    }
    return nullptr;
}

}  // namespace scan695::inspector
