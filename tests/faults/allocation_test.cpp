// Every allocation of a conversion fails, one after the other, alone and with all that follow.

#include <regex>

#include "harness/in_process.h"
#include "tests/faults/hooks.h"
#include "tests/support/samples.h"
#include "tests/support/test.h"

namespace scan695::test {
namespace {

// Up to 2,000 each; then every 97th.
uint64_t Next(uint64_t number) {
    return number < 2000 ? number + 1 : number + 97;
}

// An attribute that finds no place in the table of the STF writer is named itself in references.
std::string WithoutReferences(const std::string& stf) {
    return std::regex_replace(stf, std::regex("\ntype=[^\r]*"), "\ntype");
}

TEST(OneFault, Allocation) {
    const std::filesystem::path directory = ScratchDirectory();
    const std::filesystem::path input = directory / "t.abs";
    WriteWholeFile(input, SampleBytes("c166.abs"));
    for (const int mode : {0, 1, 2, 3}) {
        const bool debug = mode % 2 != 0;
        const auto run = [&](uint64_t failing) {
            Faults = {.failing_allocation = failing, .all_behind_fail_too = mode > 1};
            std::filesystem::remove(FstFileOf(input));
            return ConvertInProcess(input, directory / "t.stf", debug);
        };
        const Converted sound = run(0);
        const uint64_t allocations = Faults.allocations;
        ASSERT_GT(allocations, 50U);
        uint64_t tolerated = 0;
        uint64_t aliases_lost = 0;
        for (uint64_t k = 1; k <= allocations; k = Next(k)) {
            const Converted result = run(k);
            if (result.status != 0) {
                ASSERT_TRUE(StoppedWith(result, NO_MEMORY)) << k << ": " << result.console;
                continue;
            }
            ++tolerated;
            ASSERT_TRUE(result.fst == sound.fst && result.console == sound.console) << k;
            if (result.stf == sound.stf) continue;
            ++aliases_lost;
            ASSERT_EQ(WithoutReferences(result.stf), WithoutReferences(sound.stf)) << k;
        }
        EXPECT_LE(aliases_lost, 1U);  // one growth
        EXPECT_LT(tolerated, allocations / 4);
    }
    Faults = Hooks();
}

}  // namespace
}  // namespace scan695::test
