// Every allocation of a conversion fails, one after the other, alone and with all that follow.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/faults/hooks.h"
#include "tests/faults/samples.h"
#include "tests/support/in_process.h"

namespace scan695::test {
namespace {

namespace fs = std::filesystem;

// Up to 2,000 each; then every 97th.
uint64_t Next(uint64_t number) {
    return number < 2000 ? number + 1 : number + 97;
}

// An attribute that finds no place in the table of the STF writer is named itself in references.
bool DiffersInReferencesOnly(const std::string& a, const std::string& b) {
    std::istringstream lines_a(a);
    std::istringstream lines_b(b);
    std::string line_a;
    std::string line_b;
    while (std::getline(lines_a, line_a)) {
        if (!std::getline(lines_b, line_b)) return false;
        if (line_a != line_b && !(line_a.starts_with("type=") && line_b.starts_with("type=@Type.")))
            return false;
    }
    return !std::getline(lines_b, line_b);
}

class OneFault : public testing::TestWithParam<bool> {
  protected:
    void SetUp() override {
        WriteWholeFile(input_, SampleBytes("c166.abs"));
        Faults = Hooks();
        sound_ = Run(Hooks());
        ASSERT_EQ(sound_.status, 0);
        allocations_ = Faults.allocations;
    }
    void TearDown() override { Faults = Hooks(); }

    Converted Run(const Hooks& hooks) {
        Faults = hooks;
        fs::remove(FstFileOf(input_));
        return ConvertInProcess(input_, directory_ / "t.stf", GetParam());
    }

    fs::path directory_ = ScratchDirectory();
    fs::path input_ = directory_ / "t.abs";
    Converted sound_;
    uint64_t allocations_ = 0;
};

TEST_P(OneFault, Allocation) {
    ASSERT_GT(allocations_, 50U);
    uint64_t tolerated = 0;
    uint64_t aliases_lost = 0;
    for (const bool all_behind : {false, true}) {
        for (uint64_t k = 1; k <= allocations_; k = Next(k)) {
            const Converted result =
                Run({.failing_allocation = k, .all_behind_fail_too = all_behind});
            if (result.status != 0) {
                ASSERT_TRUE(StoppedWith(result, NO_MEMORY)) << k << ": " << result.console;
                continue;
            }
            ++tolerated;
            aliases_lost += result.stf != sound_.stf ? 1 : 0;
            ASSERT_TRUE(DiffersInReferencesOnly(sound_.stf, result.stf)) << k;
            ASSERT_TRUE(result.fst == sound_.fst && result.console == sound_.console) << k;
        }
    }
    EXPECT_LE(aliases_lost, 2U);             // one growth, in both rounds
    EXPECT_LT(tolerated, allocations_ / 2);  // of twice as many runs
    std::printf("%llu allocations, %llu failures tolerated\n",
                static_cast<unsigned long long>(allocations_),
                static_cast<unsigned long long>(tolerated));
}

INSTANTIATE_TEST_SUITE_P(Modes, OneFault, testing::Bool());

}  // namespace
}  // namespace scan695::test
