// What holds for every program: random ones, converted in both modes.
#include "fuzz/random_program.h"
#include "harness/in_process.h"
#include "inspector/reader.h"
#include "inspector/verify.h"
#include "tests/support/samples.h"

namespace scan695::test {
namespace {

// The FST file keeps the inspector's promises; without DebugMode the same STF text comes.
TEST(Programs, KeepTheirPromises) {
    const std::filesystem::path directory = ScratchDirectory();
    const auto convert = [&](const Bytes& file, bool debug) {
        WriteWholeFile(directory / "t.abs", file);
        return ConvertInProcess(directory / "t.abs", directory / "t.stf", debug);
    };
    int good = 0;
    for (uint32_t seed = 1; seed <= 200; ++seed) {
        fuzz::Random random(seed);
        const Bytes file = Build(fuzz::RandomProgram(random));
        const Converted plain = convert(file, false);
        const Converted debug = convert(file, true);
        if (debug.status != 0) continue;
        ++good;
        EXPECT_EQ(WithoutComments(plain.stf), WithoutComments(debug.stf)) << seed;
        inspector::Fst fst;
        std::string error;
        ASSERT_TRUE(inspector::Parse({debug.fst.begin(), debug.fst.end()}, fst, error)) << error;
        EXPECT_EQ(inspector::Verify(fst), std::vector<std::string>()) << seed;
    }
    EXPECT_GT(good, 150);
}

}  // namespace
}  // namespace scan695::test
