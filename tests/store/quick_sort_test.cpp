// The order of equal keys against the plain steps of the sort, and its speed on hard inputs.
#include "fst/quick_sort.h"

#include <algorithm>
#include <chrono>
#include <numeric>

#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

using Numbers = std::vector<uint32_t>;

Numbers Keys;

int CompareKeys(uint32_t a, uint32_t b) {
    return Keys[a] < Keys[b] ? -1 : Keys[a] > Keys[b];
}

// The steps as they define the result, whatever they cost.
void PlainSort(Numbers& index, int low, int high) {
    int i = low;
    int j = high;
    const uint32_t pivot = index[size_t(low + high) / 2];
    while (i <= j) {
        while (CompareKeys(index[size_t(i)], pivot) < 0) ++i;
        while (CompareKeys(index[size_t(j)], pivot) > 0) --j;
        if (i <= j) std::swap(index[size_t(i++)], index[size_t(j--)]);
    }
    if (low < j) PlainSort(index, low, j);
    if (i < high) PlainSort(index, i, high);
}

Numbers Sorted(const Numbers& keys) {
    Keys = keys;
    SortRecords(CompareKeys, 0, static_cast<uint32_t>(keys.size()));
    return Work.SortIndex;
}

Numbers SortedPlainly(const Numbers& keys) {
    Keys = keys;
    Numbers index(keys.size());
    std::iota(index.begin(), index.end(), 0);
    PlainSort(index, 0, static_cast<int>(index.size()) - 1);
    return index;
}

// Inputs that take the plain steps quadratic time: organ pipes, smooth and of steps, and keys whose
// upper half is split off one by one; the lower half has few values.
std::vector<Numbers> HardInputs(uint32_t count) {
    Numbers pipe(count), steps(count), worst(count), order(count);
    for (uint32_t i = 0; i < count; ++i) {
        pipe[i] = std::min(i, count - 1 - i);
        steps[i] = pipe[i] / 3;
        order[i] = i;
    }
    for (uint32_t high = count; high-- > 0;) {
        worst[order[high / 2]] = high > count / 2 ? high : high % 7;
        std::swap(order[high / 2], order[high]);
    }
    return {pipe, steps, worst};
}

using QuickSort = StoreTest;

TEST_F(QuickSort, SameOrderAsThePlainSteps) {
    for (const Numbers& keys : HardInputs(6000)) ASSERT_EQ(Sorted(keys), SortedPlainly(keys));
    Random random(3);
    for (uint32_t round = 0; round < 600; ++round) {
        Numbers keys(2 + random() % 400);
        const uint32_t values = 1 + random() % (round % 2 == 0 ? 8 : 400);
        for (uint32_t& key : keys) key = random() % values;
        ASSERT_EQ(Sorted(keys), SortedPlainly(keys)) << round;
    }
}

TEST_F(QuickSort, HardInputsTakeNoMoreThanMoments) {
    for (const Numbers& keys : HardInputs(200'000)) {
        const auto start = std::chrono::steady_clock::now();
        const Numbers index = Sorted(keys);
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        EXPECT_TRUE(std::is_sorted(index.begin(), index.end(),
                                   [](uint32_t a, uint32_t b) { return Keys[a] < Keys[b]; }));
        // Quadratic steps take several times as long on any machine of these days.
        EXPECT_LT(seconds.count(), 4.0);
    }
}

}  // namespace
}  // namespace scan695::test
