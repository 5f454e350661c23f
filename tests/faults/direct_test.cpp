// Fatal conditions that no input brings about: the store has lost what the run relies on.
#include <gtest/gtest.h>

#include "driver/run.h"
#include "scopes/conversions.h"
#include "scopes/lifetime_fixup.h"
#include "scopes/scope_state.h"
#include "stf/type_words.h"
#include "store/tables.h"
#include "tests/support/samples.h"

namespace scan695::test {
namespace {

constexpr uint32_t BEYOND = 0x7FFFFFFF;

void LostLifetime() {
    SYMINFO symbol = {};
    symbol.locinfo_offs = BEYOND;
    symbol.nof_locs = 1;
    LOCINFO location = {};
    location.end_address = 0xFFFFFFFF;
    Store.Header.nof_block_symbols = 1;
    WatchLifetime(0, symbol, {&location, 1});
    CloseLifetimes(0, 0x100);
}

TEST(Direct, Messages) {
    const struct {
        const char* message;
        void (*run)();
    } cases[] = {
        {"outName SEEK error", [] { outName("key", BEYOND); }},
        {"outField seek error", [] { outField(1, BEYOND); }},
        {"Error: cannot read temporary buffer\n", LostLifetime},
        {"CvtTkMemType: unknown processor\n", [] { CvtTkMemType(0); }},
        {"CvtTkStorageClass: unknown processor\n", [] { CvtTkStorageClass(1); }},
    };
    for (const auto& c : cases) {
        const Converted result = InChild([&] {
            StartRun(1, "/dev/null");
            c.run();
            return 98;
        });
        EXPECT_TRUE(StoppedWith(result, c.message)) << c.message << result.console;
    }
}

}  // namespace
}  // namespace scan695::test
