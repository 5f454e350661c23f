// Whole conversions of the samples: the STF file, the FST file, and what the inspector prints of
// it. It finds every one of them sound.
#include "tests/support/samples.h"

#include <sstream>

#include "inspector/reader.h"
#include "inspector/text.h"
#include "inspector/verify.h"
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

}  // namespace
}  // namespace scan695::test
