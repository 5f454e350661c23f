// Reads FST files. A reader of its own: it shares the layouts of the records with the writer and
// nothing else. Every read is bounded by the file, so a damaged file gives missing records and
// names, never a crash.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/records.h"

namespace scan695::inspector {

// The sections behind the stored area, in file order.
enum SectionId {
    TYPES,
    TYPE_INDEX,
    BLOCKS,
    BLOCK_ADDR_INDEX,
    SYMBOLS,
    SYMBOL_ADDR_INDEX,
    SYMBOL_NAME_INDEX,
    LINES,
    LINE_ADDR_INDEX,
    LINE_NUMBER_INDEX,
    GLOBAL_LINE_INDEX,
    RANGES,
    MODULES,
    MODULE_NAME_INDEX,
    CODE,
    BASIC_SIZES,
    SECTION_COUNT,
};

inline constexpr uint32_t BASIC_SIZES_COUNT = 13;
inline constexpr uint32_t BASIC_SIZES_BYTES = 16;  // padded

struct Section {
    const char* name = "";
    bool is_written = false;  // as the counts of the header tell
    uint64_t offset = 0;
    uint64_t entries = 0;  // as the file's counts tell; it may hold fewer
    uint64_t size = 0;     // bytes that `entries` take
};

struct CodeBlock {
    CODEINFO head;
    uint64_t body;  // offset of the bytes
};

// An opened file. Opening touches little but the bytes themselves: tables and indexes are used
// where they stand.
struct Fst {
    std::string path;  // as it is called in messages and answers; empty if it has no name
    std::span<const uint8_t> bytes;
    std::shared_ptr<const void> owner;  // of the bytes
    FstHeader header = {};
    std::array<Section, SECTION_COUNT> sections;
    uint64_t stored_end = 0;      // the stored area begins behind the header and ends here
    std::vector<CodeBlock> code;  // as many whole blocks as the file holds, at most nof_code
};

// Give false with the reason in `error` for a file that is not readable or no FST file.
bool Load(const std::filesystem::path& path, Fst& fst, std::string& error);
bool Parse(std::vector<uint8_t> bytes, Fst& fst, std::string& error);

template <class Record>
bool ReadAt(const Fst& fst, uint64_t offset, Record& record) {
    const uint64_t size = fst.bytes.size();
    if (offset > size || size - offset < sizeof record) return false;
    std::memcpy(&record, fst.bytes.data() + offset, sizeof record);
    return true;
}

// Record `number` of a table or entry `number` of an index, if the section has it and the file
// reaches that far.
template <class Record>
std::optional<Record> ReadEntry(const Fst& fst, SectionId id, uint64_t number) {
    const Section& section = fst.sections[id];
    Record record;
    if (!section.is_written || number >= section.entries) return {};
    if (!ReadAt(fst, section.offset + number * sizeof record, record)) return {};
    return record;
}

// How many entries of the section lie inside the file.
size_t UsableEntries(const Fst& fst, SectionId id);

// The text at an offset of the stored area: NUL-terminated, at most 31 characters.
std::optional<std::string_view> NameAt(const Fst& fst, uint32_t offset);

// Elements of a list of `count` that are in the stored area. An item has a length of 16 bits and an
// element has 16 bytes, so a list that is too long has only the remainder stored, if any.
inline constexpr uint32_t LIST_ELEMENT_BYTES = 16;
inline uint32_t StoredElements(uint32_t count) {
    return count % 4096;
}
static_assert(sizeof(FIELDINFO) == LIST_ELEMENT_BYTES && sizeof(LOCINFO) == LIST_ELEMENT_BYTES);

}  // namespace scan695::inspector
