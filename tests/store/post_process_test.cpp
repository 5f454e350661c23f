// The passes on tables as a scan leaves them.
#include "store/post_process.h"

#include "store/basic_types.h"
#include "store/image_cache.h"
#include "store/sort_passes.h"
#include "store/symbol_size.h"
#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

using Index = std::vector<uint32_t>;

class PostProcessTest : public StoreTest {
  protected:
    PostProcessTest() { ReserveFstHeader(); }

    static void AddPointerLike(uint32_t number, uint8_t tag, uint32_t type_index, uint8_t spec,
                               uint8_t size = 0) {
        TYPEINFO type = {number, tag, {}, {}};
        type.u.pointer = {type_index, spec, size, 0, {}};
        AppendRecord(Store.TypeTable, type);
        ++Store.Header.nof_types;
    }
    static void AddModule(const std::string& name) {
        FstHeader& header = Store.Header;
        AppendRecord(Store.ModuleTable, MODULEINFO{AddName(name), 0, header.nof_module_symbols, 0,
                                                   header.nof_lines, 0, LANGUAGE_C, 0});
        ++header.nof_modules;
    }
    static void AddBlock(uint32_t address, uint32_t size, int32_t parent, int32_t module) {
        FstHeader& header = Store.Header;
        AppendRecord(Store.BlockTable,
                     BLOCKINFO{address, size, parent, module, header.nof_block_symbols, 0, 1, 0});
        ++header.nof_blocks;
    }
    static void AddSymbol(ChunkFile& table, uint32_t& counter, const std::string& name,
                          uint32_t value, int8_t mem_type = 2, uint32_t type_index = 6) {
        SYMINFO symbol = {};
        symbol.name_offs = AddName(name);
        symbol.value = value;
        symbol.mem_type = mem_type;
        symbol.type_index = type_index;
        symbol.module = -1;
        AppendRecord(table, symbol);
        ++counter;
        ++Store.Header.nof_all_symbols;
    }
    static void AddGlobal(const std::string& name, uint32_t value, int8_t mem_type = 2) {
        AddSymbol(Store.GlobalSymbolTable, Store.Header.nof_global_symbols, name, value, mem_type);
    }
    static void AddOfModule(const std::string& name, uint32_t value) {
        AddSymbol(Store.ModuleSymbolTable, Store.Header.nof_module_symbols, name, value);
    }
    static void AddOfBlock(const std::string& name, uint32_t value) {
        AddSymbol(Store.BlockSymbolTable, Store.Header.nof_block_symbols, name, value);
    }
    static void AddLine(uint32_t address, uint16_t number, int32_t module) {
        AppendRecord(Store.LineTable, LINEINFO{address, module, number, 0});
        ++Store.Header.nof_lines;
    }
};

TEST_F(PostProcessTest, SizesOfSymbols) {
    SetBasicTypeSize(6, 2);
    BasicTypes.PointerSize = 3;
    AddPointerLike(110, TAG_ATTRIBUTE, 6, 0x13);
    AddPointerLike(100, TAG_POINTER, 6, 3, 4);
    AddPointerLike(101, TAG_FUNCTION, 6, 0);
    AddPointerLike(102, TAG_ENUMERATION, 6, 0);
    for (const uint8_t tag : {TAG_ARRAY, TAG_STRUCT, TAG_UNION}) {
        TYPEINFO type = {80U + tag, tag, {}, {}};
        if (tag == TAG_ARRAY)
            type.u.array = {40, 20, 6, 0};
        else
            type.u.structunion = {0, 12, 0, 3, 0};
        AppendRecord(Store.TypeTable, type);
        ++Store.Header.nof_types;
    }
    for (uint8_t i = 0; i < 9; ++i)
        AddPointerLike(120U + i, TAG_ATTRIBUTE, 100, static_cast<uint8_t>(i << 4));
    AddPointerLike(130, TAG_ATTRIBUTE, 125, 0x60);  // over memory 5
    AddPointerLike(131, TAG_ATTRIBUTE, 34, 0x70);
    AddPointerLike(140, TAG_ATTRIBUTE, 141, 0x10);
    AddPointerLike(141, TAG_ATTRIBUTE, 140, 0x20);
    SortTypes();
    const struct {
        uint32_t value, type_index, size, new_type_index;
        int8_t mem_type;  // 6 before
    } cases[] = {
        {0, 6, 2, 6, 6},       {0, 12, 1, 12, 6},           {0, 13, 0, 13, 6},
        {0, 34, 0, 0, 6},      {0, 35, 3, 35, 6},           {0, 42, 0, 42, 6},
        {0, 100, 4, 100, 6},   {0, 101, 0, 101, 6},         {0, 102, 0, 102, 6},
        {0, 116, 40, 116, 6},  {0, 117, 12, 117, 6},        {0, 118, 12, 118, 6},
        {0, 110, 2, 6, 2},     {0, 120, 4, 100, 6},         {0, 121, 4, 100, 2},
        {0, 122, 4, 100, 3},   {0, 123, 4, 100, 1},         {0x7F, 124, 1, 12, 4},
        {0x80, 124, 1, 12, 5}, {0, 125, 4, 100, 5},         {0, 126, 4, 100, 0},
        {0, 127, 4, 100, 6},   {0, 128, 4, 100, 6},         {0, 130, 4, 100, 5},
        {0, 131, 0, 0, 6},     {0, 0x10064, 4, 0x10064, 6},
    };
    SeekImageEnd();
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
    for (uint32_t type_index : {103U, 0x800005U, 140U})
        EXPECT_STOP(SymbolSize(&value, &type_index, &mem_type), "read temporary buffer\n\a\nPress");
}

TEST_F(PostProcessTest, ScopesSlicesAndIndexes) {
    AddLine(0x50, 1, -1);  // in front of the first module
    AddModule("zeta");
    AddGlobal("b", 0x20);
    AddOfModule("Two", 9);
    AddOfModule("one", 9);
    AddBlock(0x100, 0x40, -1, 0);
    AddOfBlock("x", 3);
    AddBlock(0x100, 0x10, 0, 0);
    AddOfBlock("y", 2);
    AddOfBlock("X", 1);
    AddBlock(0x120, 0, 0, 0);  // without extent
    AddLine(0x104, 2, 0);
    AddLine(0x100, 3, 0);
    AddLine(0x100, 1, 0);
    AddModule("Alpha");
    AddGlobal("a", 0x30);
    AddGlobal("b", 0x20);  // a repeat
    AddGlobal("c", 0x10, -1);
    AddBlock(0x80, 4, -1, 1);
    AddOfBlock("w", 7);
    AddLine(0x80, 9, 1);
    ConsoleOf(PostProcess);

    const FstHeader& header = Store.Header;
    EXPECT_EQ(header.nof_global_symbols, 3U);
    EXPECT_EQ(header.nof_all_symbols, 9U);
    EXPECT_EQ(header.max_block_symbols, 3);
    const auto blocks = ReadSection<BLOCKINFO>(header.blocks_offs, 4);
    const struct {
        uint32_t address, first_symbol;
        int32_t parent;
        uint16_t nof_symbols;
    } expected[] = {{0x100, 5, -1, 1}, {0x100, 6, 0, 2}, {0xFFFFFFFF, 8, -1, 0}, {0x80, 8, -1, 1}};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(blocks[i].address, expected[i].address);
        EXPECT_EQ(blocks[i].first_symbol, expected[i].first_symbol);
        EXPECT_EQ(blocks[i].parent, expected[i].parent);
        EXPECT_EQ(blocks[i].nof_symbols, expected[i].nof_symbols);
    }
    EXPECT_EQ(ReadIndex(header.block_addr_index_offs, 4), Index({3, 0, 1, 2}));

    const auto modules = ReadSection<MODULEINFO>(header.modules_offs, 2);
    EXPECT_EQ(modules[0].first_symbol, 3U);
    EXPECT_EQ(modules[0].nof_symbols, 2U);
    EXPECT_EQ(modules[0].nof_lines, 3);
    EXPECT_EQ(modules[1].first_symbol, 5U);
    EXPECT_EQ(modules[1].nof_symbols, 0U);
    EXPECT_EQ(modules[1].nof_lines, 1);
    EXPECT_EQ(ReadIndex(header.module_name_index_offs, 2), Index({1, 0}));

    // Slices: b a c | Two one | x | y X | w. Equal addresses swap.
    EXPECT_EQ(ReadIndex(header.symbol_addr_index_offs, 9), Index({2, 0, 1, 4, 3, 5, 7, 6, 8}));
    EXPECT_EQ(ReadIndex(header.symbol_name_index_offs, 9), Index({1, 0, 2, 4, 3, 5, 7, 6, 8}));
    for (const SYMINFO& symbol : ReadSection<SYMINFO>(header.symbols_offs, 9))
        EXPECT_EQ(symbol.size, GetBasicTypeSize(6));

    EXPECT_EQ(ReadIndex(header.line_addr_index_offs, 4), Index({3, 2, 1, 4}));
    EXPECT_EQ(ReadIndex(header.line_number_index_offs, 4), Index({3, 1, 2, 4}));
    EXPECT_EQ(ReadIndex(header.global_line_index_offs, 5), Index({0, 4, 3, 2, 1}));

    // Gap-free behind one another, down to the sections without entries.
    const Index offsets = {header.blocks_offs,
                           header.block_addr_index_offs,
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
                           static_cast<uint32_t>(Store.FstImage.Size())};
    const Index sizes = {96, 16, 324, 36, 36, 60, 16, 16, 20, 0, 48, 8};
    for (size_t i = 0; i < sizes.size(); ++i) EXPECT_EQ(offsets[i + 1] - offsets[i], sizes[i]) << i;
    EXPECT_EQ(header.types_offs, 0U);
    EXPECT_EQ(header.code_offs, 0U);
    EXPECT_EQ(Work.BlockWork, nullptr);
    EXPECT_EQ(Work.ModuleWork, nullptr);
}

TEST_F(PostProcessTest, Console) {
    AddModule("m");
    AddGlobal("a", 0);
    AddOfModule("s", 0);
    AddBlock(0x100, 0x40, -1, 0);
    AddOfBlock("x", 3);
    AddLine(0x104, 2, 0);
    AddPointerLike(100, TAG_POINTER, 6, 3, 4);
    Report.DebugMode = 1;
    const std::string backspaces(10, '\b'), blanks(11, ' ');
    const std::string symbols =
        "Sorting 1 global symbols\nSorting 1 symbols in module 0\nSorting 1 symbols in block 0\n";
    const std::string line = "Sorting 1 lines in module 0\n";
    EXPECT_EQ(ConsoleOf(PostProcess),
              "Filtering..." + blanks + backspaces + "\nSorting..." + blanks + backspaces +
                  "\nSorting 1 types\nSorting 1 blocks\n" + symbols + symbols + line + line +
                  "Sorting 1 lines globally\nCreating module range table\nSorting 1 modules\n"
                  "Warning: no code/data detected\ndone.\n");
}

TEST_F(PostProcessTest, CountsOf16BitsWrap) {
    AddModule("m");
    AddBlock(0x100, 0x40, -1, 0);
    for (uint32_t i = 0; i < 0x10002; ++i) AddOfBlock("x", i);
    AddBlock(0x200, 0x40, 0, 0);
    for (uint32_t i = 0; i < 0x8000; ++i) AddOfBlock("y", i);
    AddBlock(0x300, 0x40, 1, 0);
    for (uint32_t i = 0; i < 0x10003; ++i) AddLine(i, 1, 0);
    PrepareModules();
    EXPECT_EQ(Work.ModuleWork[0].nof_lines, 3);
    SortBlocks();
    EXPECT_EQ(GetBlockRecord(0, nullptr)->nof_symbols, 2);
    EXPECT_EQ(Store.Header.max_block_symbols, 2);  // 0x8002 is below 0 as a signed number
    // The section holds 2 and 0x8000 records; the slice of the second block begins behind them.
    EXPECT_STOP(SortSymbols(), "Error: cannot read temporary buffer\n");
}

TEST_F(PostProcessTest, NothingAtAll) {
    EXPECT_EQ(ConsoleOf(PostProcess),
              "Filtering...           \b\b\b\b\b\b\b\b\b\bSorting...           "
              "\b\b\b\b\b\b\b\b\b\bWarning: no code/data detected\ndone.\n");
    EXPECT_EQ(Store.FstImage.Size(), 136);
}

TEST_F(PostProcessTest, InterruptStops) {
    AddGlobal("a", 0);
    AbortRequested = 1;
    EXPECT_STOP(PostProcess(), "\b\b\b\b\b\b\b\b\b\b--- Aborted ---\n\a\nPress ENTER");
}

TEST_F(PostProcessTest, NoMemoryForAWorkingArray) {
#ifdef SCAN695_SANITIZED
    GTEST_SKIP() << "the sanitizer stops the program itself";
#endif
    EXPECT_STOP(
        {
            Report.DebugMode = 1;
            AllocateEntries("init_idx", 0xFFFFFFFF, SIZE_MAX / 4);
        },
        "init_idx\\(-1\\) -> Error: not enough memory\n");
}

}  // namespace
}  // namespace scan695::test
