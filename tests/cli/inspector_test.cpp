// The inspector: what it prints, and its checks of sound files, odd but legal ones, damaged ones.
#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

#include "inspector/json.h"
#include "inspector/reader.h"
#include "inspector/text.h"
#include "inspector/verify.h"
#include "tests/cli/fst_parts.h"
#include "tests/support/golden.h"

namespace scan695 {
namespace {

using test::FstParts;
using test::SoundParts;

const char* const TABLES[] = {"modules", "symbols", "types", "blocks", "lines", "ranges", "code"};

// A line each.
std::string Violations(const std::vector<uint8_t>& bytes) {
    inspector::Fst fst;
    std::string error;
    if (!inspector::Parse(bytes, fst, error)) return error;
    std::string text;
    for (const std::string& line : inspector::Verify(fst)) text += line + '\n';
    return text;
}

// Everything that the inspector prints as text.
std::string Printed(const std::vector<uint8_t>& bytes) {
    inspector::Fst fst;
    std::string error;
    if (!inspector::Parse(bytes, fst, error)) return error;
    std::ostringstream out;
    inspector::PrintSummary(fst, out);
    for (const char* name : TABLES) {
        out << '\n' << name << ":\n";
        inspector::PrintTable(fst, *inspector::FindTable(name), out);
    }
    return out.str();
}

TEST(Listing, IsGolden) {
    const std::vector<uint8_t> bytes = SoundParts().Assemble();
    test::ExpectGolden(Printed(bytes), "cli/golden/listing.txt");

    inspector::Fst fst;
    std::string error;
    EXPECT_TRUE(inspector::Parse(bytes, fst, error));
    std::vector<const inspector::Table*> tables;
    for (const char* name : TABLES) tables.push_back(inspector::FindTable(name));
    std::ostringstream json;
    inspector::PrintJson(fst, tables, json);
    test::ExpectGolden(json.str(), "cli/golden/listing.json");
}

void MakeEmpty(FstParts& parts) {
    const FstParts sound = parts;
    parts = {};
    parts.basic_sizes = sound.basic_sizes;
    std::memcpy(parts.header.magic, "FSTA", 4);
    parts.header.source_format = sound.header.source_format;
    parts.header.processor = sound.header.processor;
    parts.header.model_flags = sound.header.model_flags;
}

// 65,537 lines of module 0: its count wraps to 1, and the index has one entry for it.
void WrapLines(FstParts& parts) {
    parts.lines.insert(parts.lines.begin() + 3, 65535, LINEINFO{0x1010, 0, 3, 0});
    parts.modules[0].nof_lines = 1;
    parts.modules[1].first_line += 65535;
    parts.line_addresses = {1, 65539, 65538};
    parts.line_numbers = {1, 65539, 65538};
    parts.global_lines = {0, 2, 1};
    for (uint32_t i = 3; i < 65538; ++i) parts.global_lines.push_back(i);
    parts.global_lines.insert(parts.global_lines.end(), {65539, 65538});
}

// 65,537 symbols of block 0, of which the file has one; those behind are numbered as if it had all.
void WrapBlockSymbols(FstParts& parts) {
    parts.symbols.erase(parts.symbols.begin() + 5);
    parts.header.nof_block_symbols = 65538;
    parts.blocks[0].nof_symbols = 1;
    parts.blocks[1].first_symbol = 65541;
    parts.blocks[2].first_symbol = 65542;
    parts.symbol_addresses = {0, 1, 2, 3, 4, 65541};
    parts.symbol_names = {1, 0, 2, 3, 4, 65541};
    parts.header.max_block_symbols = 2;
}

const struct {
    const char* name;
    void (*change)(FstParts&);
} LEGAL[] = {
    {"as it is", [](FstParts&) {}},
    {"nothing at all", MakeEmpty},
    {"line counts wrap", WrapLines},
    {"block symbol counts wrap", WrapBlockSymbols},
    {"more than 65,535 types", [](FstParts& p) { p.symbols[1].type_index = 0x10000 + 102; }},
    {"overlapping code in input order",
     [](FstParts& p) {
         p.code = {{0x2000, 8, -1, 0, {}}, {0x1000, 9, -1, 0, {}}, {0x1008, 2, -1, 0, {}}};
     }},
    {"blocks that touch at a page",
     [](FstParts& p) {
         p.code[1] = {0x10000, 4, -1, 0, {}};
         p.code[0] = {0xFFF0, 16, -1, 0, {}};
     }},
    {"empty block",
     [](FstParts& p) {
         p.blocks[2] = {0xFFFFFFFF, 0, -1, 0, 7, 0, 0, 0};
         p.block_index = {0, 1, 2};
     }},
    {"function whose adjustments never ended",
     [](FstParts& p) {
         p.symbols[0].nof_locs = 0;
         p.symbols[0].locinfo_offs = 0;
     }},
    {"typedef of a record that is not there",
     [](FstParts& p) {
         p.types[6].type_tag = TAG_NONE;
         p.types[6].u = {};
     }},
    {"no ranges", [](FstParts& p) { p.ranges.clear(); }},
    {"range of length 0 without lines and code symbols",
     [](FstParts& p) {
         p.lines.clear();
         p.line_addresses = p.line_numbers = p.global_lines = {};
         for (MODULEINFO& module : p.modules) module.first_line = module.nof_lines = 0;
         for (SYMINFO& symbol : p.symbols) symbol.mem_type = MEM_DATA;
         p.symbol_addresses = {0, 1, 2, 3, 5, 4, 6};
         p.ranges = {{0, 0x1000, 0x20}, {1, 0x1020, 0}, {0, 0x1020, 1}};
     }},
    {"location list that did not fit",
     [](FstParts& p) {
         p.symbols[4].nof_locs = 4096;
         p.symbols[4].locinfo_offs = 0;
     }},
};

TEST(Verify, AcceptsWhatTheConverterWrites) {
    for (const auto& c : LEGAL) {
        FstParts parts = SoundParts();
        c.change(parts);
        EXPECT_EQ(Violations(parts.Assemble()), "") << c.name;
    }
}

void Continue(FstParts& parts) {
    parts.code[1] = {0x1021, 4, -1, MEM_CODE, {}};
}

void Swap(std::vector<uint32_t>& index, size_t at) {
    std::swap(index[at], index[at + 1]);
}

const struct {
    const char* violation;
    void (*change)(FstParts&);
} DAMAGED[] = {
    {"header: processor is 0x63", [](FstParts& p) { p.header.processor = 99; }},
    {"header: max_module_name is 6", [](FstParts& p) { p.header.max_module_name = 6; }},
    {"basic sizes: byte 5 is 4", [](FstParts& p) { p.basic_sizes[5] = 4; }},
    {"basic sizes: byte 15 is 1", [](FstParts& p) { p.basic_sizes[15] = 1; }},
    {"stored area: ends at", [](FstParts& p) { p.stored += '\0'; }},
    {"section blocks: at offset", [](FstParts& p) { p.type_index.push_back(0); }},
    {"section ranges: at offset", [](FstParts& p) { p.global_lines.pop_back(); }},
    {"symbol 1: no name at offset 0x0", [](FstParts& p) { p.symbols[1].name_offs = 0; }},
    {"symbol 1: name at offset 0x8d is not at", [](FstParts& p) { p.symbols[1].name_offs = 0x8D; }},
    {"type 0: name at offset 0x88 is not padded", [](FstParts& p) { p.stored[6] = 'x'; }},
    {"symbol 0: list of 16 bytes", [](FstParts& p) { p.symbols[0].locinfo_offs = 0x10000; }},
    {"symbol 0: impossible location",
     [](FstParts& p) { p.stored[p.symbols[0].locinfo_offs - sizeof(FstHeader) + 4] = 2; }},
    {"symbol 5: 1 locations without", [](FstParts& p) { p.symbols[5].nof_locs = 1; }},
    {"symbol 5: access mode is 0x1", [](FstParts& p) { p.symbols[5].access_mode = 1; }},
    {"symbol 5: no module 2", [](FstParts& p) { p.symbols[5].module = 2; }},
    {"symbol 5: no block -2", [](FstParts& p) { p.symbols[5].block = -2; }},
    {"symbol 5: storage class 2 in memory 7", [](FstParts& p) { p.symbols[5].mem_type = 7; }},
    {"symbol 1: type 106 has no record", [](FstParts& p) { p.symbols[1].type_index = 106; }},
    {"symbol 1: type 107 is an attribute", [](FstParts& p) { p.symbols[1].type_index = 107; }},
    {"symbol 1: no basic type 13", [](FstParts& p) { p.symbols[1].type_index = 13; }},
    {"symbol 2: size is 4", [](FstParts& p) { p.symbols[2].size = 4; }},
    {"symbol 2: in the wrong part", [](FstParts& p) { p.symbols[2].block = 1; }},
    {"symbol 6: reserved bytes", [](FstParts& p) { p.symbols[6].reserved = 1; }},
    {"type 0: unknown tag", [](FstParts& p) { p.types[0].type_tag = TypeTag{0x2A}; }},
    {"type 1: unknown bits", [](FstParts& p) { p.types[1].u.function.spec = 1; }},
    {"type 1: list of 16 bytes", [](FstParts& p) { p.types[1].u.function.params_offset = 0; }},
    {"type 1: parameter with a name",
     [](FstParts& p) { p.types[1].u.function.params_offset = 0x9C; }},
    {"type 6: no tag, but contents", [](FstParts& p) { p.types[6].type_tag = TAG_NONE; }},
    {"type 2: pointer neither", [](FstParts& p) { p.types[2].u.pointer.spec = 2; }},
    {"type 4: enumeration in no", [](FstParts& p) { p.types[4].u.enumeration.type_index = 5; }},
    {"type 4: list of 32 bytes", [](FstParts& p) { p.types[4].u.enumeration.field_offs = 0x8000; }},
    {"type 5: bitfield in no", [](FstParts& p) { p.types[5].u.bits.type_index = 9; }},
    {"type 0: type index of a basic type", [](FstParts& p) { p.types[0].here_type_index = 99; }},
    {"type index: entries 0 and 1 are out", [](FstParts& p) { p.types[1].here_type_index = 100; }},
    {"type index: entry 3 names record 1 a second", [](FstParts& p) { p.type_index[3] = 1; }},
    {"type index: entry 3 names record 9, which", [](FstParts& p) { p.type_index[3] = 9; }},
    {"block 0: parent is 1", [](FstParts& p) { p.blocks[0].parent = 1; }},
    {"block 1: parent is 1", [](FstParts& p) { p.blocks[1].parent = 1; }},
    {"block 1: parent 0 is of another", [](FstParts& p) { p.blocks[1].module = 1; }},
    {"block 2: empty, but", [](FstParts& p) { p.blocks[2].size = 0; }},
    {"block 1: 1 symbols from 5 on", [](FstParts& p) { p.blocks[1].first_symbol = 5; }},
    {"block address index: entries 1 and 2", [](FstParts& p) { Swap(p.block_index, 1); }},
    {"symbol address index: entries 0 and 1", [](FstParts& p) { Swap(p.symbol_addresses, 0); }},
    {"symbol name index: entries 4 and 5", [](FstParts& p) { Swap(p.symbol_names, 4); }},
    {"symbol name index: entry 0 names record 2, which",
     [](FstParts& p) { std::swap(p.symbol_names[0], p.symbol_names[2]); }},
    {"line 1: module is 1", [](FstParts& p) { p.lines[1].module = 1; }},
    {"line address index: entries 2 and 3", [](FstParts& p) { Swap(p.line_addresses, 2); }},
    {"line number index: entries 0 and 1", [](FstParts& p) { Swap(p.line_numbers, 0); }},
    {"global line index: entries 3 and 4", [](FstParts& p) { Swap(p.global_lines, 3); }},
    {"module 0: 1 lines from 1 on", [](FstParts& p) { p.modules[0].nof_lines = 1; }},
    {"module 0: first symbol is 1", [](FstParts& p) { p.modules[0].first_symbol = 1; }},
    {"module 1: language is 2", [](FstParts& p) { p.modules[1].language = 2; }},
    {"module name index: entries 0 and 1", [](FstParts& p) { Swap(p.module_names, 0); }},
    {"range 1: begins at 0x101f", [](FstParts& p) { p.ranges[1].address = 0x101F; }},
    {"range 1: of the same module", [](FstParts& p) { p.ranges[1].module = 0; }},
    {"range 1: no module 2", [](FstParts& p) { p.ranges[1].module = 2; }},
    {"range 1: length is 1", [](FstParts& p) { p.ranges[1].length = 1; }},
    {"range 1: ends outside", [](FstParts& p) { p.ranges[1].length = 0xFFFFFFFF; }},
    {"ranges: present without code", [](FstParts& p) { p.code.erase(p.code.begin()); }},
    {"code block 0: module is 0", [](FstParts& p) { p.code[0].module = 0; }},
    {"code block 1: memory is 3", [](FstParts& p) { p.code[1].mem_type = 3; }},
    {"code block 1: empty", [](FstParts& p) { p.code[1].length = 0; }},
    {"code block 1: continues the one", Continue},
    {"code block 1: 0x10100 bytes from", [](FstParts& p) { p.code[1].length = 0x10100; }},
    {"code block 1: 0x101 bytes from",
     [](FstParts& p) {
         p.code[1] = {0xFFFF, 0x101, -1, 0, {}};
     }},
    {"code: not sorted, and nothing overlaps",
     [](FstParts& p) {
         p.code = {{0x1010, 4, -1, 0, {}}, {0x1000, 16, -1, 0, {}}};
     }},
    {"code: not sorted", [](FstParts& p) { std::swap(p.code[0], p.code[1]); }},
};

TEST(Verify, NamesEachViolation) {
    for (const auto& c : DAMAGED) {
        FstParts parts = SoundParts();
        c.change(parts);
        const auto bytes = parts.Assemble();
        EXPECT_NE(Violations(bytes).find(c.violation), std::string::npos)
            << c.violation << " is not in\n"
            << Violations(bytes);
        Printed(bytes);
    }
}

// Whatever a byte says, nothing is read outside the file. No change of the header stays unnoticed
// but those of the start address and the version.
TEST(Verify, SurvivesEveryChangedByte) {
    const std::vector<uint8_t> sound = SoundParts().Assemble();
    for (size_t offset = 0; offset < sound.size(); ++offset) {
        const bool is_checked = offset < sizeof(FstHeader) && offset / 4 != 29 &&
                                offset != offsetof(FstHeader, format_version);
        for (const int change : {0x01, 0x80, 0xFF}) {
            std::vector<uint8_t> bytes = sound;
            bytes[offset] = static_cast<uint8_t>(bytes[offset] ^ change);
            EXPECT_TRUE(!Violations(bytes).empty() || !is_checked) << offset << " by " << change;
            Printed(bytes);
        }
    }
}

TEST(Verify, NoticesEveryTruncationAndExtension) {
    const std::vector<uint8_t> sound = SoundParts().Assemble();
    for (size_t size = 0; size < sound.size(); ++size) {
        const std::vector<uint8_t> bytes(sound.begin(), sound.begin() + static_cast<long>(size));
        EXPECT_FALSE(Violations(bytes).empty()) << size;
        Printed(bytes);
    }
    std::vector<uint8_t> longer = sound;
    longer.push_back(0);
    EXPECT_EQ(Violations(longer), "file: 1 bytes behind the last section\n");
}

}  // namespace
}  // namespace scan695
