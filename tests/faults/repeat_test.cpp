// Conversions one after the other in one process give what each gives in a process of its own, and
// take no more memory as they go on.

#include "harness/in_process.h"
#include "tests/faults/fatal_cases.h"
#include "tests/faults/hooks.h"
#include "tests/support/samples.h"
#include "tests/support/test.h"

namespace scan695::test {
namespace {

namespace fs = std::filesystem;

// Stopped runs with good ones between them. The list of the struct lies in the image where the file
// of the circle has its types, which its run has read last.
std::vector<std::vector<uint8_t>> Inputs() {
    const Bytes types =
        NamedType(0x46, "s", 0x100, def::Struct(4, {{"m", 0x101, 0}, {"n", 16, 2}})) +
        NamedType(0x47, "t", 0x101, def::SmallPointer(16));
    std::vector<std::vector<uint8_t>> inputs = {CircleOfAttributes(),
                                                Build({.debug = Bb1("M", types) + Bytes{0xE0, 0}})};
    for (const FatalCase& fault : FatalCases()) {
        inputs.push_back(Build(fault.File()));
        inputs.push_back(SampleBytes(SAMPLES[inputs.size() % 3]));
    }
    return inputs;
}

TEST(Repeat, GivesTheSame) {
    const fs::path directory = ScratchDirectory();
    const fs::path input = directory / "t.abs";
    const fs::path stf = directory / "t.stf";
    const auto inputs = Inputs();
    const auto run = [&](size_t number, auto convert) {
        WriteWholeFile(input, inputs[number / 2]);
        fs::remove(FstFileOf(input));
        return convert(input, stf, number % 2 != 0);
    };
    std::vector<Converted> alone;
    for (size_t i = 0; i < 2 * inputs.size(); ++i) alone.push_back(run(i, ConvertFile));
    for (size_t i = 0; i < 2 * inputs.size(); ++i)
        EXPECT_TRUE(SameResults(run(i, ConvertInProcess), alone[i])) << i;
}

// What the system gives may be a few bytes larger than what was asked for.
TEST(Repeat, MemoryStays) {
    constexpr uint64_t SLACK = 256;
    const fs::path directory = ScratchDirectory();
    for (const bool debug : {false, true}) {
        for (const char* sample : SAMPLES) {
            WriteWholeFile(directory / "t.abs", SampleBytes(sample));
            uint64_t behind_five = 0;
            for (int run = 1; run <= 50; ++run) {
                ConvertInProcess(directory / "t.abs", directory / "t.stf", debug);
                if (run == 5) behind_five = AllocatedBytes();
            }
            EXPECT_LE(AllocatedBytes(), behind_five + SLACK) << sample << debug;
        }
    }
}

}  // namespace
}  // namespace scan695::test
