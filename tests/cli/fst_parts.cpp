#include "tests/cli/fst_parts.h"

namespace scan695::test {

namespace {

template <class Record>
uint32_t Append(std::string& bytes, const std::vector<Record>& records, bool is_written) {
    const auto offset = static_cast<uint32_t>(bytes.size());
    bytes.append(reinterpret_cast<const char*>(records.data()), records.size() * sizeof(Record));
    return is_written ? offset : 0;
}

uint32_t AppendCode(std::string& bytes, const std::vector<CODEINFO>& code) {
    const auto offset = static_cast<uint32_t>(bytes.size());
    for (const CODEINFO& head : code) {
        bytes.append(reinterpret_cast<const char*>(&head), sizeof head);
        for (uint32_t i = 0; i < head.length; ++i) bytes += static_cast<char>(i);
    }
    return code.empty() ? 0 : offset;
}

TYPEINFO Type(uint32_t index, uint8_t tag) {
    TYPEINFO type = {};
    type.here_type_index = index;
    type.type_tag = tag;
    return type;
}

void AddTypes(FstParts& parts) {
    TYPEINFO pair = Type(100, TAG_STRUCT);
    pair.u.structunion = {parts.Name("pair"), 4, 0, 2, 0};
    pair.u.structunion.field_offs =
        parts.List<FIELDINFO>({{0, parts.Name("x"), TYPE_INT, 0}, {2, parts.Name("next"), 103, 0}});
    TYPEINFO function = Type(101, TAG_FUNCTION);
    function.u.function = {TYPE_INT, 2, 1, {}, parts.List<FIELDINFO>({{0, 0, 103, 0}}), 0, {}};
    TYPEINFO pointer = Type(103, TAG_POINTER);
    pointer.u.pointer = {100, 1, 2, 0, {}};
    TYPEINFO array = Type(102, TAG_ARRAY);
    array.u.array = {4, 4, TYPE_CHAR, 0};
    TYPEINFO color = Type(104, TAG_ENUMERATION);
    color.u.enumeration = {parts.Name("color"), 0, 2, TYPE_INT};
    color.u.enumeration.field_offs =
        parts.List<FIELDINFO>({{0, parts.Name("RED"), 0, 0}, {7, parts.Name("BLUE"), 0, 0}});
    TYPEINFO bits = Type(105, TAG_BITFIELD);
    bits.u.bits = {3, 2, {}, TYPE_ULONG, {}};
    TYPEINFO attribute = Type(107, TAG_ATTRIBUTE);  // 106 never got a record
    attribute.u.pointer = {TYPE_MARKER_BIT | 0x1FF, 0x10, 0, 0, {}};
    parts.types = {pair, function, pointer, array, color, bits, attribute};
    parts.type_index = {0, 1, 3, 2, 4, 5, 6};
}

void AddSymbols(FstParts& parts) {
    const uint16_t located = ACCESS_HAS_LOCATIONS;
    const uint32_t adjust = parts.List<LOCINFO>({{4, 0, 0, 1, 0, 0x1004, 0x1008}});
    const uint32_t lives = parts.List<LOCINFO>({{0x1007, STORAGE_REGISTER, 8, 0, 0, 0x1000, 0x1010},
                                                {6, STORAGE_AUTO, 2, 0, 0, 0x1010, 0x101F}});
    const auto name = [&](const char* text) { return parts.Name(text); };
    parts.symbols = {
        {name("main"), 0x1000, 0, 0, -1, 101, located, STORAGE_GLOBAL, 0, 1, 0, adjust},
        {name("Buffer"), 0x8000, 4, -1, -1, 102, 0, STORAGE_GLOBAL, 2, 0, 0, 0},
        {name("count"), 0x8010, 2, 0, -1, TYPE_INT, 0, STORAGE_STATIC, 2, 0, 0, 0},
        {name("label"), 0x1100, 0, 1, -1, TYPE_VOID, 0, STORAGE_STATIC, 0, 0, 0, 0},
        {name("b"), 0x1007, 2, 0, 0, 103, located, STORAGE_REGISTER, 8, 2, 0, lives},
        {name("A"), 8, 2, 0, 0, TYPE_INT, 0, STORAGE_AUTO, 2, 0, 0, 0},
        {name("c\n\xE4"), 4, 4, 0, 1, 100, 0, STORAGE_AUTO, 2, 0, 0, 0},
    };
    parts.symbol_addresses = {0, 1, 2, 3, 5, 4, 6};
    parts.symbol_names = {1, 0, 2, 3, 5, 4, 6};
    parts.header.nof_global_symbols = 2;
    parts.header.nof_module_symbols = 2;
    parts.header.nof_block_symbols = 3;
    parts.header.max_symbol_name = 6;
}

}  // namespace

uint32_t FstParts::Store(std::string item) {
    const auto offset = static_cast<uint32_t>(sizeof header + stored.size());
    item.resize((item.size() + 3) / 4 * 4);
    stored += item;
    return offset;
}

std::vector<uint8_t> FstParts::Assemble() {
    std::memcpy(header.magic, "FSTA", 4);
    const auto count = [](const auto& table) { return static_cast<uint32_t>(table.size()); };
    header.nof_types = count(types);
    header.nof_blocks = count(blocks);
    header.nof_all_symbols =
        header.nof_global_symbols + header.nof_module_symbols + header.nof_block_symbols;
    header.nof_lines = count(lines);
    header.nof_ranges = count(ranges);
    header.nof_modules = count(modules);
    header.nof_code = count(code);

    std::string bytes(sizeof header, '\0');
    bytes += stored;
    const bool has_symbols = header.nof_all_symbols > 0;
    header.types_offs = Append(bytes, types, !types.empty());
    header.type_index_offs = Append(bytes, type_index, !types.empty());
    header.blocks_offs = Append(bytes, blocks, !blocks.empty());
    header.block_addr_index_offs = Append(bytes, block_index, !blocks.empty());
    header.symbols_offs = Append(bytes, symbols, has_symbols);
    header.symbol_addr_index_offs = Append(bytes, symbol_addresses, has_symbols);
    header.symbol_name_index_offs = Append(bytes, symbol_names, has_symbols);
    header.lines_offs = Append(bytes, lines, !lines.empty());
    header.line_addr_index_offs = Append(bytes, line_addresses, !lines.empty());
    header.line_number_index_offs = Append(bytes, line_numbers, !lines.empty());
    header.global_line_index_offs = Append(bytes, global_lines, !lines.empty());
    header.ranges_offs = Append(bytes, ranges, !modules.empty());
    header.modules_offs = Append(bytes, modules, !modules.empty());
    header.module_name_index_offs = Append(bytes, module_names, !modules.empty());
    header.code_offs = AppendCode(bytes, code);
    header.basic_sizes_offs = static_cast<uint32_t>(bytes.size());
    bytes.append(basic_sizes.begin(), basic_sizes.end());
    std::memcpy(bytes.data(), &header, sizeof header);
    return {bytes.begin(), bytes.end()};
}

FstParts SoundParts() {
    FstParts parts;
    AddTypes(parts);
    AddSymbols(parts);
    parts.modules = {{parts.Name("BETA"), parts.Name("beta.c"), 2, 1, 1, 2, LANGUAGE_C, 0},
                     {parts.Name("alpha"), 0, 3, 1, 3, 2, LANGUAGE_ASM, 0}};
    parts.module_names = {1, 0};
    parts.blocks = {{0x1000, 0x20, -1, 0, 4, 2, 1, 0},
                    {0x1004, 0x08, 0, 0, 6, 1, 0, 0},
                    {0x1004, 0x0C, 0, 0, 7, 0, 0, 0}};
    parts.block_index = {0, 2, 1};
    parts.lines = {{0x0FF0, -1, 1, 0},  // read before the first module
                   {0x1010, 0, 3, 0},
                   {0x1000, 0, 5, 0},
                   {0x1100, 1, 7, 0},
                   {0x1100, 1, 6, 0}};
    parts.line_addresses = {2, 1, 4, 3};
    parts.line_numbers = {1, 2, 4, 3};
    parts.global_lines = {0, 2, 1, 4, 3};
    parts.ranges = {{0, 0x1000, 0x20}, {1, 0x1100, 0x40}};
    parts.code = {{0x1000, 0x21, -1, MEM_CODE, {}}, {0x8000, 4, -1, MEM_DATA, {}}};
    parts.basic_sizes = {0, 1, 1, 2, 2, 2, 2, 4, 4, 4, 4, 4, 1};
    parts.header.max_module_name = 5;
    parts.header.max_block_symbols = 3;
    parts.header.source_format = 20;
    parts.header.processor = PROCESSOR_C166;
    parts.header.start_address = 0x1000;
    parts.header.has_start_address = 1;
    parts.header.model_flags = 1;
    return parts;
}

}  // namespace scan695::test
