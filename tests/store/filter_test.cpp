// Repeats among the global symbols.
#include "store/filter.h"

#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

struct Symbol {
    std::string name;
    uint32_t value = 0x100;
    uint32_t type_index = 6;
    int8_t mem_type = 0;
};

class Filter : public StoreTest {
  protected:
    // Filters global symbols, each with its number as module; gives the modules of those that stay.
    static std::vector<int32_t> Kept(const std::vector<Symbol>& symbols) {
        Reset();
        ReserveFstHeader();
        for (const Symbol& symbol : symbols) {
            SYMINFO record = {};
            record.name_offs = AddName(symbol.name);
            record.value = symbol.value;
            record.type_index = symbol.type_index;
            record.mem_type = symbol.mem_type;
            record.module = static_cast<int32_t>(Store.Header.nof_global_symbols++);
            AppendRecord(Store.GlobalSymbolTable, record);
        }
        Store.Header.nof_all_symbols = Store.Header.nof_global_symbols + 10;
        const int32_t size = Store.GlobalSymbolTable.Size();
        EXPECT_EQ(ConsoleOf(FilterGlobalSymbols), "Filtering...           \b\b\b\b\b\b\b\b\b\b");
        EXPECT_EQ(Store.Header.nof_all_symbols, Store.Header.nof_global_symbols + 10);
        EXPECT_EQ(Store.GlobalSymbolTable.Size(), size);
        EXPECT_EQ(Work.FilterWork, nullptr);
        std::vector<int32_t> kept;
        for (uint32_t i = 0; i < Store.Header.nof_global_symbols; ++i) {
            SYMINFO record = {};
            ReadRecord(Store.GlobalSymbolTable, i, record);
            kept.push_back(record.module);
        }
        return kept;
    }
};

TEST_F(Filter, KeepsTheFirstOfEachGroup) {
    using Numbers = std::vector<int32_t>;
    const std::string longest(31, 'n');
    EXPECT_EQ(Kept({}), Numbers());
    EXPECT_EQ(Kept({{"a"}, {"a"}}), Numbers({0}));
    EXPECT_EQ(Kept({{"a"}, {"A"}}), Numbers({0, 1}));
    EXPECT_EQ(Kept({{"a"}, {"a", 0x101}, {"a", 0x100, 5}, {"a", 0x100, 6, 2}}),
              Numbers({0, 1, 2, 3}));
    EXPECT_EQ(Kept({{"a"}, {"b"}, {"a"}, {"c"}, {"b"}, {"a"}, {"d"}}), Numbers({0, 1, 3, 6}));
    EXPECT_EQ(Kept({{""}, {longest}, {""}, {longest + "x"}, {longest.substr(1)}}),
              Numbers({0, 1, 4}));
    // What lies behind a name in the image is no part of it.
    EXPECT_EQ(Kept({{"a"}, {"x"}, {"a"}, {"y"}, {"a"}}), Numbers({0, 1, 3}));
}

TEST_F(Filter, ManySymbols) {
    constexpr uint32_t COUNT = 60'000;
    std::vector<Symbol> symbols;
    for (uint32_t i = 0; i < COUNT; ++i) symbols.push_back({std::to_string(i % 40'000)});
    const std::vector<int32_t> kept = Kept(symbols);
    ASSERT_EQ(kept.size(), 40'000U);
    for (int32_t i = 0; i < 40'000; ++i) ASSERT_EQ(kept[static_cast<size_t>(i)], i);
}

}  // namespace
}  // namespace scan695::test
