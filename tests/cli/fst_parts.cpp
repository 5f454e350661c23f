#include "tests/cli/fst_parts.h"

#include <cstring>

#include "tests/support/golden.h"

namespace scan695::test {

namespace {

// Calls `visit` for each table in file order, with its offset in the header and the count that
// tells whether it is there.
template <class Visit>
void ForEachTable(FstParts& parts, Visit visit) {
    FstHeader& header = parts.header;
    visit(parts.types, header.types_offs, header.nof_types);
    visit(parts.type_index, header.type_index_offs, header.nof_types);
    visit(parts.blocks, header.blocks_offs, header.nof_blocks);
    visit(parts.block_index, header.block_addr_index_offs, header.nof_blocks);
    visit(parts.symbols, header.symbols_offs, header.nof_all_symbols);
    visit(parts.symbol_addresses, header.symbol_addr_index_offs, header.nof_all_symbols);
    visit(parts.symbol_names, header.symbol_name_index_offs, header.nof_all_symbols);
    visit(parts.lines, header.lines_offs, header.nof_lines);
    visit(parts.line_addresses, header.line_addr_index_offs, header.nof_lines);
    visit(parts.line_numbers, header.line_number_index_offs, header.nof_lines);
    visit(parts.global_lines, header.global_line_index_offs, header.nof_lines);
    visit(parts.ranges, header.ranges_offs, header.nof_modules);
    visit(parts.modules, header.modules_offs, header.nof_modules);
    visit(parts.module_names, header.module_name_index_offs, header.nof_modules);
}

template <class Table>
size_t BytesOf(const Table& table) {
    return table.size() * sizeof table[0];
}

}  // namespace

std::vector<uint8_t> FstParts::Assemble() {
    header.nof_types = static_cast<uint32_t>(types.size());
    header.nof_blocks = static_cast<uint32_t>(blocks.size());
    header.nof_all_symbols =
        header.nof_global_symbols + header.nof_module_symbols + header.nof_block_symbols;
    header.nof_lines = static_cast<uint32_t>(lines.size());
    header.nof_ranges = static_cast<uint32_t>(ranges.size());
    header.nof_modules = static_cast<uint32_t>(modules.size());
    header.nof_code = static_cast<uint32_t>(code.size());

    std::string bytes = std::string(sizeof header, '\0') + stored;
    ForEachTable(*this, [&](const auto& table, uint32_t& offset, uint32_t count) {
        offset = count > 0 ? static_cast<uint32_t>(bytes.size()) : 0;
        bytes.append(reinterpret_cast<const char*>(table.data()), BytesOf(table));
    });
    header.code_offs = code.empty() ? 0 : static_cast<uint32_t>(bytes.size());
    for (const CODEINFO& head : code) {
        bytes.append(reinterpret_cast<const char*>(&head), sizeof head);
        for (uint32_t i = 0; i < head.length; ++i) bytes += static_cast<char>(i);
    }
    header.basic_sizes_offs = static_cast<uint32_t>(bytes.size());
    bytes.append(basic_sizes.begin(), basic_sizes.end());
    std::memcpy(bytes.data(), &header, sizeof header);
    return {bytes.begin(), bytes.end()};
}

FstParts SoundParts() {
    static const std::string file = ReadWholeFile(TESTS / "cli/golden/sound.fst");
    FstParts parts;
    FstHeader& header = parts.header;
    std::memcpy(&header, file.data(), sizeof header);
    parts.stored = file.substr(sizeof header, header.types_offs - sizeof header);
    std::vector<uint32_t> ends;  // each table reaches up to the next one
    ForEachTable(parts, [&](const auto&, uint32_t offset, uint32_t) { ends.push_back(offset); });
    ends.push_back(header.code_offs);
    ForEachTable(parts, [&, next = size_t{0}](auto& table, uint32_t offset, uint32_t) mutable {
        table.resize((ends[++next] - offset) / sizeof table[0]);
        std::memcpy(table.data(), file.data() + offset, BytesOf(table));
    });
    for (size_t at = header.code_offs; parts.code.size() < header.nof_code;) {
        CODEINFO& head = parts.code.emplace_back();
        std::memcpy(&head, file.data() + at, sizeof head);
        at += sizeof head + head.length;
    }
    std::memcpy(parts.basic_sizes.data(), file.data() + header.basic_sizes_offs, 16);
    return parts;
}

}  // namespace scan695::test
