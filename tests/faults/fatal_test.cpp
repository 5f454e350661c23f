// Every fatal message that bytes of an input can bring about, in both modes.
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include "scan695.h"
#include "tests/faults/fatal_cases.h"
#include "tests/support/samples.h"

namespace scan695::test {
namespace {

namespace fs = std::filesystem;

TEST(Fatal, Messages) {
    const fs::path directory = ScratchDirectory();
    const fs::path input = directory / "t.abs";
    for (const FatalCase& fault : FatalCases()) {
        const Bytes file = Build(fault.File());
        for (const bool debug : {false, true}) {
            WriteWholeFile(input, file);
            WriteWholeFile(directory / "T.FST", {1, 2, 3});  // of an earlier run
            const Converted result = ConvertFile(input, directory / "t.stf", debug);
            EXPECT_TRUE(StoppedWith(result, fault.Expected()))
                << testing::PrintToString(fault.read.First(60).vector()) << "\nstatus "
                << result.status << ", expected: " << fault.Expected() << "got: "
                << result.console.substr(result.console.size() -
                                         std::min<size_t>(result.console.size(), 200));
            EXPECT_FALSE(fs::exists(directory / "T.FST")) << fault.message;
            EXPECT_TRUE(ReadWholeFile(input) == std::string(file.begin(), file.end()));
        }
    }
}

// The prompt stands on the console before the process waits, and a whole line ends it.
TEST(Fatal, WaitsForALine) {
    int typed[2];
    int shown[2];
    ASSERT_EQ(pipe(typed) + pipe(shown), 0);
    const pid_t child = fork();
    if (child == 0) {
        if (dup2(typed[0], 0) < 0 || dup2(shown[1], 1) < 0) std::_Exit(99);
        for (const int end : {typed[0], typed[1], shown[0], shown[1]}) close(end);
        (void)Convert(0, "/no such directory/t.abs", "/no such directory/t.stf", 0);
        std::_Exit(98);
    }
    close(typed[0]);
    close(shown[1]);
    pollfd console = {.fd = shown[0], .events = POLLIN, .revents = 0};
    std::string seen;
    char c;
    while (!seen.ends_with(PROMPT) && poll(&console, 1, 10000) > 0 && read(shown[0], &c, 1) == 1)
        seen += c;
    EXPECT_TRUE(seen.ends_with(PROMPT)) << seen;
    EXPECT_EQ(write(typed[1], "ab", 2), 2);
    EXPECT_EQ(poll(&console, 1, 100), 0) << "it did not wait for the end of the line";
    EXPECT_EQ(write(typed[1], "\n", 1), 1);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
    close(typed[1]);
    close(shown[0]);
}

// Offsets have 31 bits.
TEST(Fatal, InputOf2To31Bytes) {
    const fs::path input = ScratchDirectory() / "t.abs";
    WriteWholeFile(input, SampleBytes("c166.abs"));
    fs::resize_file(input, uint64_t{1} << 31);  // it takes no room
    EXPECT_TRUE(StoppedWith(ConvertFile(input, input.parent_path() / "t.stf"), NO_MEMORY));
}

// Types that refer to one another in a circle have no size.
TEST(Fatal, CircleOfAttributes) {
    const Bytes file = CircleOfAttributes();
    EXPECT_EQ(ConvertBytes(file, false).status, 0);
    EXPECT_TRUE(StoppedWith(ConvertBytes(file, true), "Error: cannot read temporary buffer\n"));
}

}  // namespace
}  // namespace scan695::test
