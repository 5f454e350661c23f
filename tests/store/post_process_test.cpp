// The passes on tables as a scan leaves them.
#include "fst/filter.h"
#include "fst/image_access.h"
#include "fst/sort_passes.h"
#include "fst/symbol_size.h"
#include "store/tables.h"
#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

using Index = std::vector<uint32_t>;
using PostProcessTest = StoreTest;

TEST_F(PostProcessTest, SizesOfSymbols) {
    SetBasicTypeSize(6, 2);
    Store.PointerSize = 3;
    const auto add_type = [](uint32_t number, TypeTag tag, const TYPEINFO::Variant& fields) {
        Add(Store.TypeTable, header.nof_types, TYPEINFO{number, tag, {}, fields});
    };
    add_type(100, TAG_POINTER, {.pointer = {6, 3, 4, 0, {}}});
    add_type(101, TAG_ATTRIBUTE, {.pointer = {34, 0x70, 0, 0, {}}});
    add_type(0x1FFFF, TAG_POINTER, {});  // never found: a look-up has 16 bits
    SortTypes();
    constexpr uint32_t CASES[][3] = {
        {6, 2, 6},     {12, 1, 12}, {13, 0, 13},           {34, 0, 0}, {35, 3, 35}, {42, 0, 42},
        {100, 4, 100}, {101, 0, 0}, {0x10064, 4, 0x10064},
    };
    TypeEnds ends;
    int8_t mem_type = 6;
    for (const auto& [before, size, after] : CASES) {
        uint32_t type_index = before;
        EXPECT_EQ(SymbolSize(ends, 0, type_index, mem_type), size) << before;
        EXPECT_EQ(type_index, after);
    }
    for (uint32_t type_index : {103U, 0x800005U, 0x1FFFFU})
        EXPECT_STOP(SymbolSize(ends, 0, type_index, mem_type), "read temporary buffer\n\a\nPress");
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
    EXPECT_EQ(GetBlockRecord(0).nof_symbols, 2);
    EXPECT_EQ(header.max_block_symbols, 2);  // 0x8002 is below 0 as a signed number
    // The section holds 2 and 0x8000 records; the slice of the second block begins behind them.
    EXPECT_STOP(SortSymbols(), "Error: cannot read temporary buffer\n");
}

TEST_F(PostProcessTest, NoMemoryForAWorkingArray) {
#ifdef SCAN695_SANITIZED
    GTEST_SKIP() << "the sanitizer stops the program itself";
#endif
    Report.DebugMode = 1;
    struct Giant {
        char bytes[1U << 31];
    };
    std::vector<Giant> giants;
    EXPECT_STOP(AllocateEntries(giants, "init_idx", 0xFFFFFFFF),
                "init_idx\\(-1\\) -> Error: not enough memory\n");
}

class Filter : public StoreTest {
  protected:
    // Filters the symbols and gives the numbers of those that stay, told by the places of names.
    static Index Kept(const std::vector<SYMINFO>& symbols) {
        for (const SYMINFO& symbol : symbols) AddGlobal(symbol);
        NewSymbol("of a module", 0);
        const uint32_t size = Store.GlobalSymbolTable.Size();
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
