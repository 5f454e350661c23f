#include "inspector/reader.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace scan695::inspector {

namespace {

constexpr uint64_t LARGEST_FILE = 0x7FFFFFFF;

struct SectionLayout {
    const char* name;
    uint32_t FstHeader::*offset;
    uint32_t FstHeader::*count;  // records of the table that the section belongs to
    uint32_t entry_size;
};

constexpr std::array<SectionLayout, SECTION_COUNT> LAYOUT = {{
    {"types", &FstHeader::types_offs, &FstHeader::nof_types, sizeof(TYPEINFO)},
    {"type index", &FstHeader::type_index_offs, &FstHeader::nof_types, 4},
    {"blocks", &FstHeader::blocks_offs, &FstHeader::nof_blocks, sizeof(BLOCKINFO)},
    {"block address index", &FstHeader::block_addr_index_offs, &FstHeader::nof_blocks, 4},
    {"symbols", &FstHeader::symbols_offs, &FstHeader::nof_all_symbols, sizeof(SYMINFO)},
    {"symbol address index", &FstHeader::symbol_addr_index_offs, &FstHeader::nof_all_symbols, 4},
    {"symbol name index", &FstHeader::symbol_name_index_offs, &FstHeader::nof_all_symbols, 4},
    {"lines", &FstHeader::lines_offs, &FstHeader::nof_lines, sizeof(LINEINFO)},
    {"line address index", &FstHeader::line_addr_index_offs, &FstHeader::nof_lines, 4},
    {"line number index", &FstHeader::line_number_index_offs, &FstHeader::nof_lines, 4},
    {"global line index", &FstHeader::global_line_index_offs, &FstHeader::nof_lines, 4},
    {"ranges", &FstHeader::ranges_offs, &FstHeader::nof_ranges, sizeof(RANGEINFO)},
    {"modules", &FstHeader::modules_offs, &FstHeader::nof_modules, sizeof(MODULEINFO)},
    {"module name index", &FstHeader::module_name_index_offs, &FstHeader::nof_modules, 4},
    {"code", &FstHeader::code_offs, &FstHeader::nof_code, 0},
    {"basic sizes", &FstHeader::basic_sizes_offs, nullptr, 1},
}};

void SetEntries(Section& section, uint64_t entries, uint64_t entry_size) {
    section.entries = entries;
    section.size = entries * entry_size;
}

void ReadLayout(Fst& fst) {
    const FstHeader& header = fst.header;
    for (int id = 0; id < SECTION_COUNT; ++id) {
        const SectionLayout& layout = LAYOUT[static_cast<size_t>(id)];
        Section& section = fst.sections[static_cast<size_t>(id)];
        const uint32_t count = layout.count == nullptr ? BASIC_SIZES_BYTES : header.*layout.count;
        section.name = layout.name;
        section.offset = header.*layout.offset;
        section.is_written = count > 0;
        SetEntries(section, count, layout.entry_size);
    }
    // The range table has its place, if not its bytes, whenever there are modules.
    fst.sections[RANGES].is_written = header.nof_modules > 0;
}

// Sections whose length follows from the scopes. The counts of a block's symbols and of a module's
// lines are 16 bits wide: a scope that has more is cut to the remainder, in the symbol table too.
// Where the offsets of the sections agree with the whole counts nothing was cut; only else are the
// scopes added up.
void ReadScopeCounts(Fst& fst) {
    const FstHeader& header = fst.header;
    const auto is_gap = [](uint32_t begin, uint32_t end, uint64_t size) {
        return end >= begin && end - begin == size;
    };
    const auto first = ReadEntry<MODULEINFO>(fst, MODULES, 0);
    uint64_t symbols = header.nof_all_symbols;
    uint64_t lines = first && first->first_line <= header.nof_lines
                         ? header.nof_lines - first->first_line
                         : uint64_t{0};
    if (!is_gap(header.symbols_offs, header.symbol_addr_index_offs, symbols * sizeof(SYMINFO))) {
        symbols = header.nof_global_symbols;
        for (uint64_t i = 0; i < UsableEntries(fst, MODULES); ++i)
            symbols += ReadEntry<MODULEINFO>(fst, MODULES, i)->nof_symbols;
        for (uint64_t i = 0; i < UsableEntries(fst, BLOCKS); ++i)
            symbols += ReadEntry<BLOCKINFO>(fst, BLOCKS, i)->nof_symbols;
    }
    if (!is_gap(header.line_addr_index_offs, header.line_number_index_offs, lines * 4)) {
        lines = 0;
        for (uint64_t i = 0; i < UsableEntries(fst, MODULES); ++i)
            lines += ReadEntry<MODULEINFO>(fst, MODULES, i)->nof_lines;
    }
    SetEntries(fst.sections[SYMBOLS], symbols, sizeof(SYMINFO));
    SetEntries(fst.sections[SYMBOL_ADDR_INDEX], symbols, 4);
    SetEntries(fst.sections[SYMBOL_NAME_INDEX], symbols, 4);
    SetEntries(fst.sections[LINE_ADDR_INDEX], lines, 4);
    SetEntries(fst.sections[LINE_NUMBER_INDEX], lines, 4);
}

void ReadCode(Fst& fst) {
    Section& section = fst.sections[CODE];
    if (!section.is_written) return;
    uint64_t position = section.offset;
    CodeBlock block;
    while (fst.code.size() < section.entries && ReadAt(fst, position, block.head)) {
        block.body = position + sizeof block.head;
        if (fst.bytes.size() - block.body < block.head.length) break;
        position = block.body + block.head.length;
        fst.code.push_back(block);
    }
    section.size = position - section.offset;
}

void FindStoredEnd(Fst& fst) {
    fst.stored_end = fst.bytes.size();
    for (const Section& section : fst.sections) {
        if (!section.is_written) continue;
        fst.stored_end = std::min(fst.stored_end, section.offset);
        return;
    }
}

bool ReadHead(Fst& fst, std::string& error) {
    if (fst.bytes.size() < 4 || std::memcmp(fst.bytes.data(), "FSTA", 4) != 0) {
        error = "not an FST file";
        return false;
    }
    if (!ReadAt(fst, 0, fst.header)) {
        error = "cut off inside the header";
        return false;
    }
    ReadLayout(fst);
    ReadScopeCounts(fst);
    ReadCode(fst);
    FindStoredEnd(fst);
    return true;
}

}  // namespace

bool Load(const std::filesystem::path& path, Fst& fst, std::string& error) {
    std::error_code code;
    const bool is_directory = std::filesystem::is_directory(path, code);
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (is_directory || !file) {
        error = is_directory ? "is a directory" : std::generic_category().message(errno);
        return false;
    }
    const auto size = static_cast<std::streamoff>(file.tellg());
    if (size < 0 || static_cast<uint64_t>(size) > LARGEST_FILE) {
        error = size < 0 ? "cannot be read" : "too large for an FST file";
        return false;
    }
    const auto count = static_cast<size_t>(size);
    auto bytes = std::make_unique_for_overwrite<uint8_t[]>(count);
    file.seekg(0);
    if (count > 0 &&
        !file.read(reinterpret_cast<char*>(bytes.get()), static_cast<std::streamsize>(count))) {
        error = "cannot be read";
        return false;
    }
    fst = {};
    const std::u8string name = path.u8string();
    fst.path.assign(name.begin(), name.end());
    fst.bytes = {bytes.get(), count};
    fst.owner = std::shared_ptr<const uint8_t[]>(std::move(bytes));
    return ReadHead(fst, error);
}

bool Parse(std::vector<uint8_t> bytes, Fst& fst, std::string& error) {
    const auto owner = std::make_shared<const std::vector<uint8_t>>(std::move(bytes));
    fst = {};
    fst.bytes = *owner;
    fst.owner = owner;
    return ReadHead(fst, error);
}

size_t UsableEntries(const Fst& fst, SectionId id) {
    const Section& section = fst.sections[id];
    if (id == CODE) return fst.code.size();
    if (!section.is_written || section.offset > fst.bytes.size()) return 0;
    const uint64_t stored = (fst.bytes.size() - section.offset) / LAYOUT[id].entry_size;
    return static_cast<size_t>(std::min(section.entries, stored));
}

std::optional<std::string_view> NameAt(const Fst& fst, uint32_t offset) {
    if (offset < sizeof(FstHeader) || offset >= fst.stored_end) return {};
    const char* text = reinterpret_cast<const char*>(fst.bytes.data()) + offset;
    const size_t limit =
        static_cast<size_t>(std::min<uint64_t>(fst.stored_end - offset, MAX_NAME_LENGTH + 1));
    const void* end = std::memchr(text, '\0', limit);
    if (end == nullptr) return {};
    return std::string_view(text, static_cast<size_t>(static_cast<const char*>(end) - text));
}

}  // namespace scan695::inspector
