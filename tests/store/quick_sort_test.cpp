// The order of equal keys against the plain steps of the sort, and its speed on hard inputs.
#include "store/quick_sort.h"

#include <algorithm>
#include <chrono>
#include <functional>

#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

std::vector<uint32_t> Keys;

int CompareKeys(uint32_t a, uint32_t b) {
    return Keys[a] < Keys[b] ? -1 : Keys[a] > Keys[b];
}

// The steps as they define the result, whatever they cost.
void PlainSort(std::vector<uint32_t>& index, int low, int high) {
    for (;;) {
        int i = low;
        int j = high;
        const uint32_t pivot = index[size_t(low + high) / 2];
        while (i <= j) {
            while (CompareKeys(index[size_t(i)], pivot) < 0) ++i;
            while (CompareKeys(index[size_t(j)], pivot) > 0) --j;
            if (i <= j) std::swap(index[size_t(i++)], index[size_t(j--)]);
        }
        if (low < j) PlainSort(index, low, j);
        if (i >= high) return;
        low = i;
    }
}

std::vector<uint32_t> Sorted(const std::vector<uint32_t>& keys) {
    Keys = keys;
    const auto count = static_cast<uint32_t>(keys.size());
    SortRecords(CompareKeys, count);
    return {Work.SortIndex.get(), Work.SortIndex.get() + count};
}

std::vector<uint32_t> SortedPlainly(const std::vector<uint32_t>& keys) {
    Keys = keys;
    std::vector<uint32_t> index(keys.size());
    for (uint32_t i = 0; i < index.size(); ++i) index[i] = i;
    if (index.size() >= 2) PlainSort(index, 0, static_cast<int>(index.size()) - 1);
    return index;
}

const struct Shape {
    const char* name;
    std::function<uint32_t(uint32_t, uint32_t)> key;  // of place and count
} SHAPES[] = {
    {"sorted", [](uint32_t i, uint32_t) { return i; }},
    {"reversed", [](uint32_t i, uint32_t n) { return n - i; }},
    {"all equal", [](uint32_t, uint32_t) { return 5U; }},
    {"organ pipe", [](uint32_t i, uint32_t n) { return std::min(i, n - 1 - i); }},
    {"valley", [](uint32_t i, uint32_t n) { return std::max(i, n - 1 - i); }},
    {"organ pipe of steps", [](uint32_t i, uint32_t n) { return std::min(i, n - 1 - i) / 3; }},
    {"sawtooth", [](uint32_t i, uint32_t) { return i % 100; }},
    {"falling sawtooth", [](uint32_t i, uint32_t) { return 1000 - i % 1000; }},
    {"steps", [](uint32_t i, uint32_t) { return i / 50; }},
    {"two halves", [](uint32_t i, uint32_t n) { return i < n / 2 ? i + n : i; }},
    {"few values", [](uint32_t i, uint32_t) { return i * 2654435761U >> 30; }},
    {"scattered", [](uint32_t i, uint32_t n) { return (i * 2654435761U >> 8) % n; }},
};

std::vector<uint32_t> Make(const Shape& shape, uint32_t count) {
    std::vector<uint32_t> keys(count);
    for (uint32_t i = 0; i < count; ++i) keys[i] = shape.key(i, count);
    return keys;
}

// Keys whose upper half the plain steps split off one by one, at the cost of a pass each; the lower
// half has few values.
std::vector<uint32_t> MakeWorst(uint32_t count) {
    std::vector<uint32_t> order(count);
    for (uint32_t i = 0; i < count; ++i) order[i] = i;
    std::vector<uint32_t> keys(count);
    for (uint32_t high = count; high-- > 0;) {
        keys[order[high / 2]] = high > count / 2 ? high : high % 7;
        std::swap(order[high / 2], order[high]);
    }
    return keys;
}

using QuickSort = StoreTest;

TEST_F(QuickSort, EqualKeysByHand) {
    const struct {
        std::vector<uint32_t> keys, result;
    } cases[] = {
        {{7}, {0}},
        {{7, 7}, {1, 0}},
        {{7, 7, 7}, {2, 1, 0}},
        {{7, 7, 7, 7}, {2, 3, 0, 1}},
        {{2, 1, 2, 1}, {3, 1, 0, 2}},
    };
    for (const auto& c : cases) EXPECT_EQ(Sorted(c.keys), c.result);
}

TEST_F(QuickSort, SameOrderAsThePlainSteps) {
    for (const Shape& shape : SHAPES)
        for (const uint32_t count : {2U, 3U, 64U, 1000U, 4097U}) {
            const std::vector<uint32_t> keys = Make(shape, count);
            ASSERT_EQ(Sorted(keys), SortedPlainly(keys)) << shape.name << " " << count;
        }
    const std::vector<uint32_t> worst = MakeWorst(6000);
    ASSERT_EQ(Sorted(worst), SortedPlainly(worst));
    Random random(3);
    for (uint32_t round = 0; round < 600; ++round) {
        std::vector<uint32_t> keys(2 + random() % 400);
        const uint32_t values = 1 + random() % (round % 2 == 0 ? 8 : 400);
        for (uint32_t& key : keys) key = random() % values;
        ASSERT_EQ(Sorted(keys), SortedPlainly(keys)) << round;
    }
}

TEST_F(QuickSort, HardInputsTakeNoMoreThanMoments) {
    constexpr uint32_t COUNT = 200'000;
    auto check = [](const char* name, const std::vector<uint32_t>& keys) {
        const auto start = std::chrono::steady_clock::now();
        const std::vector<uint32_t> index = Sorted(keys);
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        EXPECT_TRUE(std::is_sorted(index.begin(), index.end(), [](uint32_t a, uint32_t b) {
            return Keys[a] < Keys[b];
        })) << name;
        // Quadratic steps take several times as long on any machine of these days.
        EXPECT_LT(seconds.count(), 4.0) << name;
    };
    for (const Shape& shape : SHAPES) check(shape.name, Make(shape, COUNT));
    check("worst", MakeWorst(COUNT));
}

}  // namespace
}  // namespace scan695::test
