// The passes on tables as a scan leaves them.
#include "store/post_process.h"

#include "store/basic_types.h"
#include "store/filter.h"
#include "store/image_cache.h"
#include "store/sort_passes.h"
#include "store/symbol_size.h"
#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

using Index = std::vector<uint32_t>;

class PostProcessTest : public StoreTest {
  protected:
    static void AddType(uint32_t number, uint8_t tag, const TYPEINFO::Variant& fields) {
        Add(Store.TypeTable, header.nof_types, TYPEINFO{number, tag, {}, fields});
    }
    static Index ReadIndex(uint32_t at, uint32_t count) { return ReadSection<uint32_t>(at, count); }
};

TEST_F(PostProcessTest, SizesOfSymbols) {
    SetBasicTypeSize(6, 2);
    BasicTypes.PointerSize = 3;
    AddType(116, TAG_ARRAY, {.array = {40, 20, 6, 0}});
    AddType(117, TAG_STRUCT, {.structunion = {0, 12, 0, 3, 0}});
    AddType(118, TAG_UNION, {.structunion = {0, 13, 0, 3, 0}});
    AddType(100, TAG_POINTER, {.pointer = {6, 3, 4, 0, {}}});
    AddType(101, TAG_FUNCTION, {.function = {6, 0, 4, {}, 4, 4, {}}});
    AddType(110, TAG_ATTRIBUTE, {.pointer = {6, 0x13, 0, 0, {}}});
    for (uint8_t i = 0; i < 9; ++i)
        AddType(120U + i, TAG_ATTRIBUTE, {.pointer = {100, uint8_t(i << 4), 0, 0, {}}});
    AddType(0x1FFFF, TAG_POINTER, {});  // never found: a look-up has 16 bits
    AddType(130, TAG_ATTRIBUTE, {.pointer = {125, 0x60, 0, 0, {}}});  // over memory 5
    AddType(131, TAG_ATTRIBUTE, {.pointer = {34, 0x70, 0, 0, {}}});
    SortTypes();
    const struct {
        uint32_t value, type_index, size, new_type_index;
        int8_t mem_type;  // 6 before
    } cases[] = {
        {0, 6, 2, 6, 6},
        {0, 12, 1, 12, 6},
        {0, 13, 0, 13, 6},
        {0, 34, 0, 0, 6},
        {0, 35, 3, 35, 6},
        {0, 42, 0, 42, 6},
        {0, 100, 4, 100, 6},
        {0, 101, 0, 101, 6},
        {0, 110, 2, 6, 2},
        {0, 116, 40, 116, 6},
        {0, 117, 12, 117, 6},
        {0, 118, 13, 118, 6},
        {0, 120, 4, 100, 6},
        {0, 121, 4, 100, 2},
        {0, 122, 4, 100, 3},
        {0, 123, 4, 100, 1},
        {0x7F, 124, 1, 12, 4},
        {0x80, 124, 1, 12, 5},
        {0, 125, 4, 100, 5},
        {0, 126, 4, 100, 0},
        {0, 127, 4, 100, 6},
        {0, 128, 4, 100, 6},
        {0, 130, 4, 100, 5},
        {0, 131, 0, 0, 6},
        {0, 0x10064, 4, 0x10064, 6},
    };
    const int32_t position = Store.FstImage.Position();
    for (const auto& c : cases) {
        uint32_t type_index = c.type_index;
        int8_t mem_type = 6;
        EXPECT_EQ(SymbolSize(&c.value, &type_index, &mem_type), c.size) << c.type_index;
        EXPECT_EQ(type_index, c.new_type_index) << c.type_index;
        EXPECT_EQ(mem_type, c.mem_type) << c.type_index;
        EXPECT_EQ(Store.FstImage.Position(), position);
    }
    const uint32_t value = 0;
    int8_t mem_type = 6;
    for (uint32_t type_index : {103U, 0x800005U, 0x1FFFFU})
        EXPECT_STOP(SymbolSize(&value, &type_index, &mem_type), "read temporary buffer\n\a\nPress");
}

TEST_F(PostProcessTest, ScopesSlicesAndIndexes) {
    AddLine(0x50, 1, -1);  // in front of the first module
    AddModule("zeta");
    AddGlobal(NewSymbol("b", 0x20));
    AddOfModule(NewSymbol("Two", 9));
    AddOfModule(NewSymbol("one", 9));
    AddBlock(0x100, 0x40, -1, 0);
    AddOfBlock(NewSymbol("x", 3));
    AddBlock(0x100, 0x10, 0, 0);
    AddOfBlock(NewSymbol("y", 2));
    AddOfBlock(NewSymbol("X", 1));
    AddBlock(0x120, 0, 0, 0);  // without extent
    AddLine(0x104, 2, 0);
    AddLine(0x100, 3, 0);
    AddLine(0x100, 1, 0);
    AddModule("Alpha");
    AddGlobal(NewSymbol("a", 0x30));
    AddGlobal(NewSymbol("b", 0x20));  // a repeat
    AddGlobal(NewSymbol("c", 0x10, -1));
    AddBlock(0x80, 4, -1, 1);
    AddOfBlock(NewSymbol("w", 7));
    AddLine(0x80, 9, 1);
    AddCode(0x100, "data", MEM_DATA);  // no code, no ranges
    ConsoleOf(PostProcess);

    EXPECT_EQ(header.nof_global_symbols, 3U);
    EXPECT_EQ(header.nof_all_symbols, 9U);
    EXPECT_EQ(header.max_block_symbols, 3);
    Index blocks, modules;  // the fields that the passes complete
    for (const BLOCKINFO& b : ReadSection<BLOCKINFO>(header.blocks_offs, 4))
        blocks.insert(blocks.end(), {b.address, uint32_t(b.parent), b.first_symbol, b.nof_symbols});
    for (const MODULEINFO& m : ReadSection<MODULEINFO>(header.modules_offs, 2))
        modules.insert(modules.end(), {m.first_symbol, m.nof_symbols, m.first_line, m.nof_lines});
    constexpr uint32_t NONE = 0xFFFFFFFF;
    EXPECT_EQ(blocks,
              Index({0x100, NONE, 5, 1, 0x100, 0, 6, 2, NONE, NONE, 8, 0, 0x80, NONE, 8, 1}));
    EXPECT_EQ(modules, Index({3, 2, 1, 3, 5, 0, 4, 1}));
    EXPECT_EQ(ReadIndex(header.block_addr_index_offs, 4), Index({3, 0, 1, 2}));
    EXPECT_EQ(ReadIndex(header.module_name_index_offs, 2), Index({1, 0}));

    // Slices: b a c | Two one | x | y X | w. Equal addresses swap.
    EXPECT_EQ(ReadIndex(header.symbol_addr_index_offs, 9), Index({2, 0, 1, 4, 3, 5, 7, 6, 8}));
    EXPECT_EQ(ReadIndex(header.symbol_name_index_offs, 9), Index({1, 0, 2, 4, 3, 5, 7, 6, 8}));
    for (const SYMINFO& symbol : ReadSection<SYMINFO>(header.symbols_offs, 9))
        EXPECT_EQ(symbol.size, GetBasicTypeSize(6));

    EXPECT_EQ(ReadIndex(header.line_addr_index_offs, 4), Index({3, 2, 1, 4}));
    EXPECT_EQ(ReadIndex(header.line_number_index_offs, 4), Index({3, 1, 2, 4}));
    EXPECT_EQ(ReadIndex(header.global_line_index_offs, 5), Index({0, 4, 3, 2, 1}));

    // Gap-free behind one another, down to the section of ranges without entries.
    const Index offsets = {header.block_addr_index_offs,
                           header.symbols_offs,
                           header.symbol_addr_index_offs,
                           header.symbol_name_index_offs,
                           header.lines_offs,
                           header.line_addr_index_offs,
                           header.line_number_index_offs,
                           header.global_line_index_offs,
                           header.ranges_offs,
                           header.modules_offs,
                           header.module_name_index_offs,
                           header.code_offs,
                           uint32_t(Store.FstImage.Size())};
    const uint32_t sizes[] = {96, 16, 324, 36, 36, 60, 16, 16, 20, 0, 48, 8, 20};
    uint32_t end = header.blocks_offs;
    for (size_t i = 0; i < offsets.size(); ++i) EXPECT_EQ(offsets[i], end += sizes[i]) << i;
    EXPECT_EQ(header.types_offs, 0U);
}

TEST_F(PostProcessTest, Console) {
    AddModule("m");
    AddGlobal(NewSymbol("a", 0));
    AddOfModule(NewSymbol("s", 0));
    AddBlock(0x100, 0x40, -1, 0);
    AddOfBlock(NewSymbol("x", 3));
    AddLine(0x104, 2, 0);
    AddType(100, TAG_POINTER, {.pointer = {6, 3, 4, 0, {}}});
    AddCode(0x1000, "code");
    Report.DebugMode = 1;
    const std::string wait = "...           \b\b\b\b\b\b\b\b\b\b";
    const std::string symbols =
        "Sorting 1 global symbols\nSorting 1 symbols in module 0\nSorting 1 symbols in block 0\n";
    const std::string line = "Sorting 1 lines in module 0\n";
    EXPECT_EQ(ConsoleOf(PostProcess),
              "Filtering" + wait + "\nSorting" + wait + "\nSorting 1 types\nSorting 1 blocks\n" +
                  symbols + symbols + line + line +
                  "Sorting 1 lines globally\nCreating module range table\n"
                  "Code without module: addr=1000, lng=4\nUsing blocks to build range table\n"
                  "use block_0: mod_idx=0, addr=0x100, length=0x40\n"
                  "Using lines to build range table\nUsing code symbols to build range table\n"
                  "Sorting 1 modules\nSorting code\ndone.\n");
    Reset();
    EXPECT_EQ(ConsoleOf(PostProcess),
              "Filtering" + wait + "Sorting" + wait + "Warning: no code/data detected\ndone.\n");
    EXPECT_EQ(Store.FstImage.Size(), 136);
}

TEST_F(PostProcessTest, CountsOf16BitsWrap) {
    AddModule("m");
    AddBlock(0x100, 0x40, -1, 0);
    for (uint32_t i = 0; i < 0x10002; ++i) AddOfBlock(NewSymbol("x", i));
    AddBlock(0x200, 0x40, 0, 0);
    for (uint32_t i = 0; i < 0x8000; ++i) AddOfBlock(NewSymbol("y", i));
    AddBlock(0x300, 0x40, 1, 0);
    for (uint32_t i = 0; i < 0x10003; ++i) AddLine(i, 1, 0);
    PrepareModules();
    EXPECT_EQ(Work.ModuleWork[0].nof_lines, 3);
    SortBlocks();
    EXPECT_EQ(GetBlockRecord(0, nullptr)->nof_symbols, 2);
    EXPECT_EQ(header.max_block_symbols, 2);  // 0x8002 is below 0 as a signed number
    // The section holds 2 and 0x8000 records; the slice of the second block begins behind them.
    EXPECT_STOP(SortSymbols(), "Error: cannot read temporary buffer\n");
}

TEST_F(PostProcessTest, NoMemoryForAWorkingArray) {
#ifdef SCAN695_SANITIZED
    GTEST_SKIP() << "the sanitizer stops the program itself";
#endif
    Report.DebugMode = 1;
    EXPECT_STOP(AllocateEntries("init_idx", 0xFFFFFFFF, SIZE_MAX / 4),
                "init_idx\\(-1\\) -> Error: not enough memory\n");
}

class Filter : public StoreTest {
  protected:
    // Filters the symbols and gives the numbers of those that stay, told by the places of names.
    static Index Kept(const std::vector<SYMINFO>& symbols) {
        for (const SYMINFO& symbol : symbols) AddGlobal(symbol);
        NewSymbol("of a module", 0);
        const int32_t size = Store.GlobalSymbolTable.Size();
        ConsoleOf(FilterGlobalSymbols);
        EXPECT_EQ(header.nof_all_symbols, header.nof_global_symbols + 1);
        EXPECT_EQ(Store.GlobalSymbolTable.Size(), size);
        Index kept;
        for (uint32_t i = 0; i < header.nof_global_symbols; ++i) {
            SYMINFO record = {};
            ReadRecord(Store.GlobalSymbolTable, i, record);
            uint32_t number = i;
            while (symbols[number].name_offs != record.name_offs) ++number;
            kept.push_back(number);
        }
        Reset();
        return kept;
    }
};

TEST_F(Filter, KeepsTheFirstOfEachGroup) {
    const auto plain = [](const std::string& name) { return NewSymbol(name, 0x100); };
    const std::string longest(31, 'n');
    EXPECT_EQ(Kept({plain("a"), plain("A"), plain("a")}), Index({0, 1}));
    EXPECT_EQ(Kept({plain("a"), NewSymbol("a", 0x101), NewSymbol("a", 0x100, MEM_DATA, 5),
                    NewSymbol("a", 0x100, MEM_CODE)}),
              Index({0, 1, 2, 3}));
    EXPECT_EQ(Kept({plain(""), plain(longest), plain(""), plain(longest + "x"),
                    plain(longest.substr(1)), plain("")}),
              Index({0, 1, 4}));
}

TEST_F(Filter, ManySymbols) {
    std::vector<SYMINFO> symbols;
    Index first;
    for (uint32_t i = 0; i < 60'000; ++i) {
        symbols.push_back(NewSymbol(std::to_string(i % 40'000), 0));
        if (i < 40'000) first.push_back(i);
    }
    EXPECT_EQ(Kept(symbols), first);
}

}  // namespace
}  // namespace scan695::test
