// Whole conversions of the samples: the STF file, the FST file, and what the inspector prints of
// it. It finds every one of them sound.
#include "tests/support/samples.h"

#include <sstream>

#include "inspector/reader.h"
#include "inspector/text.h"
#include "inspector/verify.h"
#include "scan695.h"
#include "tests/support/golden.h"

namespace scan695::test {
namespace {

TEST(Samples, AreGolden) {
    for (const std::filesystem::path sample : SAMPLES) {
        const std::string golden = "samples/golden" / sample.stem();
        const Converted result = ConvertBytes(SampleBytes(sample.c_str()), true);
        const std::string stf = ConvertBytes(SampleBytes(sample.c_str())).stf;
        ExpectGolden(Folded(stf), golden + ".stf");
        EXPECT_EQ(WithoutComments(result.stf), WithoutComments(stf)) << sample;
        ExpectGoldenBytes(result.fst, golden + ".fst");

        inspector::Fst fst;
        std::string error;
        ASSERT_TRUE(inspector::Parse({result.fst.begin(), result.fst.end()}, fst, error)) << error;
        EXPECT_EQ(inspector::Verify(fst), std::vector<std::string>());
        std::ostringstream out;
        inspector::PrintSummary(fst, out);
        for (const char* name :
             {"modules", "symbols", "types", "blocks", "lines", "ranges", "code"}) {
            out << '\n' << name << ":\n";
            inspector::PrintTable(fst, *inspector::FindTable(name), out);
        }
        ExpectGolden(out.str(), golden + ".txt");
    }
}

// Every DebugMode but 0 is one.
TEST(Samples, AnyDebugMode) {
    const std::filesystem::path directory = ScratchDirectory();
    const std::filesystem::path input = directory / "t.abs";
    const std::string stf = directory / "t.stf";
    WriteWholeFile(input, SampleBytes("296sa.abs"));
    const Converted one = ConvertFile(input, stf, true);
    for (const uint32_t mode : {2U, 0x100U, 0x80000000U, 0xFFFFFFFFU}) {
        std::filesystem::remove(FstFileOf(input));
        const Converted other = InChild(
            [&] { return Convert(0, input.c_str(), stf.c_str(), mode) == nullptr ? 0 : 98; });
        EXPECT_EQ(other.status, 0);
        EXPECT_EQ(other.console, one.console) << mode;
        EXPECT_EQ(ReadWholeFile(FstFileOf(input)) == one.fst, true) << mode;
        EXPECT_EQ(ReadWholeFile(stf) == one.stf, true) << mode;
    }
}

}  // namespace
}  // namespace scan695::test
