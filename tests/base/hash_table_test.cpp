// The hash table against the standard map, with the numbers at the ends of their range.
#include "base/hash_table.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

namespace scan695::test {
namespace {

TEST(HashTable, AgainstTheStandardMap) {
    std::mt19937 engine(1);
    const auto random = [&engine] { return static_cast<uint32_t>(engine()); };
    HashTable<7> newest;  // no item is 7
    HashTable<> first;
    std::map<uint32_t, uint32_t> plain_newest;
    std::map<uint32_t, uint32_t> plain_first;
    for (uint32_t step = 0; step < 20000; ++step) {
        const uint32_t key = random() % 5 == 0 ? random() % 3 - 1 : random() % 9000 << 20;
        const uint32_t item = step == 40 ? 0xFFFFFFFF : 8 + step;
        newest.Put(key, item);
        plain_newest[key] = item;
        EXPECT_EQ(first.AddNew(key, step), plain_first.emplace(key, step).second);
        const auto known = plain_newest.find(key + 1);
        ASSERT_EQ(newest.Find(key + 1).value_or(7),
                  known == plain_newest.end() ? 7 : known->second);
    }
    for (const auto& [key, item] : plain_newest) ASSERT_EQ(newest.Find(key), item);
    for (const auto& [key, item] : plain_first) ASSERT_EQ(first.Find(key), item);
    first.Clear();
    EXPECT_FALSE(first.Find(0));
}

// Names of all lengths and with zeros are told apart by the finder's test even under one key.
TEST(HashTable, TellsThingsOfOneKeyApart) {
    HashTable<> table;
    table.ReserveMore(300);
    std::string text;
    std::map<uint32_t, std::string> texts;
    for (uint32_t number = 0; number < 300; ++number, text += number % 3 == 0 ? '\0' : 'x') {
        texts[number] = text;
        const uint32_t key = number % 2 == 0 ? HashBytes(text) : 1;
        const auto same = [&](uint32_t other) { return texts[other] == text; };
        EXPECT_TRUE(table.AddNew(key, number, same));
        EXPECT_FALSE(table.AddNew(key, 1000, same));
        EXPECT_EQ(table.Find(key, same), number);
        EXPECT_FALSE(table.Find(key + 1, same));
    }
}

}  // namespace
}  // namespace scan695::test
