// Conversions one after the other in one process give what each gives in a process of its own, and
// take no more memory as they go on.
#include <gtest/gtest.h>

#include "tests/faults/fatal_cases.h"
#include "tests/faults/hooks.h"
#include "tests/faults/samples.h"
#include "tests/support/in_process.h"

namespace scan695::test {
namespace {

namespace fs = std::filesystem;

struct Job {
    fs::path input;
    fs::path stf;
    bool debug = false;
};

// The samples in both modes, and between them files that stop in the middle of the scan.
std::vector<Job> Jobs() {
    const fs::path directory = ScratchDirectory();
    const std::vector<FatalCase> faults = FatalCases();
    std::vector<Job> jobs;
    for (size_t i = 0; i < 50; ++i) {
        const Job job = {directory / ("t" + std::to_string(i) + ".abs"), directory / "t.stf",
                         i % 4 < 2};
        if (i % 5 == 4)
            WriteWholeFile(job.input, Build(faults[i].File()));
        else
            WriteWholeFile(job.input, SampleBytes(SAMPLES[i % 3]));
        jobs.push_back(job);
    }
    return jobs;
}

TEST(Repeat, FiftyConversions) {
    const std::vector<Job> jobs = Jobs();
    std::vector<Converted> alone;
    for (const Job& job : jobs) alone.push_back(ConvertFile(job.input, job.stf, job.debug));
    for (size_t i = 0; i < jobs.size(); ++i) {
        fs::remove(FstFileOf(jobs[i].input));
        const Converted result = ConvertInProcess(jobs[i].input, jobs[i].stf, jobs[i].debug);
        EXPECT_TRUE(SameResults(result, alone[i])) << i;
    }
}

// The list of this struct lies in the image where the file of the circle has its types, which the
// stopped run has read last.
TEST(Repeat, NothingIsLeftOfAStoppedRun) {
    const fs::path directory = ScratchDirectory();
    const fs::path input = directory / "t.abs";
    const fs::path stf = directory / "t.stf";
    const Bytes types =
        NamedType(0x46, "s", 0x100, def::Struct(4, {{"m", 0x101, 0}, {"n", 16, 2}})) +
        NamedType(0x47, "t", 0x101, def::SmallPointer(16));
    const Bytes file = Build({.debug = Bb1("M", types) + Bytes{0xE0, 0}});
    WriteWholeFile(input, file);
    const Converted alone = ConvertFile(input, stf, true);
    WriteWholeFile(input, CircleOfAttributes());
    EXPECT_EQ(ConvertInProcess(input, stf, true).status, 1);
    WriteWholeFile(input, file);
    EXPECT_TRUE(SameResults(ConvertInProcess(input, stf, true), alone));
}

TEST(Repeat, MemoryStays) {
    for (const bool debug : {false, true}) {
        for (const char* sample : SAMPLES) {
            const fs::path directory = ScratchDirectory();
            WriteWholeFile(directory / "t.abs", SampleBytes(sample));
            uint64_t behind_five = 0;
            for (int run = 1; run <= 50; ++run) {
                ConvertInProcess(directory / "t.abs", directory / "t.stf", debug);
                if (run == 5) behind_five = AllocatedBytes();
            }
            EXPECT_LE(AllocatedBytes(), behind_five) << sample << debug;
        }
    }
}

}  // namespace
}  // namespace scan695::test
