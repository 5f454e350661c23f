// An interrupt is honoured in the post-processing of a debug run and nowhere else.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "include/scan695.h"
#include "tests/faults/hooks.h"
#include "tests/faults/samples.h"
#include "tests/support/in_process.h"
#include "tests/support/object_builder.h"

namespace scan695::test {
namespace {

namespace fs = std::filesystem;

const std::string ABORTED = "\b\b\b\b\b\b\b\b\b\b--- Aborted ---\n";

TEST(Interrupt, AtEachMoment) {
    const struct {
        Moment moment;
        bool debug;
        bool stops;
    } cases[] = {
        {Moment::kLoad, false, false},      {Moment::kLoad, true, true},
        {Moment::kScan, false, false},      {Moment::kScan, true, true},
        {Moment::kPostProcess, true, true}, {Moment::kRanges, true, true},
        {Moment::kSave, true, false},
    };
    const fs::path directory = ScratchDirectory();
    WriteWholeFile(directory / "t.abs", SampleBytes("c166.abs"));
    for (const auto& c : cases) {
        Faults = Hooks();
        const Converted sound = ConvertInProcess(directory / "t.abs", directory / "t.stf", c.debug);
        Faults.interrupt = c.moment;
        const Converted result =
            ConvertInProcess(directory / "t.abs", directory / "t.stf", c.debug);
        const int at = static_cast<int>(c.moment);
        EXPECT_EQ(result.stf, sound.stf) << at;
        if (c.stops)
            EXPECT_TRUE(StoppedWith(result, ABORTED)) << at << result.console;
        else
            EXPECT_TRUE(SameResults(result, sound)) << at << result.console;
    }
    Faults = Hooks();
}

#if defined(SCAN695_SANITIZED) || defined(SCAN695_COVERAGE)
constexpr std::chrono::seconds PATIENCE(10);
#else
constexpr std::chrono::seconds PATIENCE(1);
#endif

// Enough symbols that their sorting takes a while.
Bytes LargeFile() {
    Bytes symbols;
    for (uint32_t i = 0; i < 50000; ++i)
        symbols += PublicSymbol(32, "s" + std::to_string(i * 7919 % 100003), 16, 19, i);
    return Build({.external = symbols + Bytes{0xE0}});
}

// Reads the console of the child until the text has come.
void WaitFor(int console, const std::string& text) {
    std::string seen;
    char buffer[4096];
    for (ssize_t n = 1; n > 0 && seen.find(text) == std::string::npos;) {
        n = read(console, buffer, sizeof buffer);
        if (n > 0)
            seen = seen.substr(seen.size() > 100 ? seen.size() - 100 : 0) +
                   std::string(buffer, static_cast<size_t>(n));
    }
}

TEST(Interrupt, OfAnotherProcess) {
    const fs::path directory = ScratchDirectory();
    WriteWholeFile(directory / "t.abs", LargeFile());
    int console[2];
    ASSERT_EQ(pipe(console), 0);
    const pid_t child = fork();
    if (child == 0) {
        dup2(console[1], 1);
        close(console[0]), close(console[1]);
        std::setvbuf(stdout, nullptr, _IOLBF, 4096);
        if (std::freopen("/dev/null", "r", stdin) == nullptr) std::_Exit(99);
        std::_Exit(RunConvert(directory / "t.abs", directory / "t.stf", true));
    }
    close(console[1]);
    WaitFor(console[0], "Ext symbol: ");  // the scan has come to the symbols
    kill(child, SIGINT);
    const auto interrupted = std::chrono::steady_clock::now();
    std::thread rest([&] { WaitFor(console[0], "no such text"); });
    int status = 0;
    waitpid(child, &status, 0);
    rest.join();
    close(console[0]);
    EXPECT_LT(std::chrono::steady_clock::now() - interrupted, PATIENCE);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
    EXPECT_FALSE(fs::exists(directory / "T.FST"));
    EXPECT_TRUE(ReadWholeFile(directory / "t.stf").ends_with("}\r\n"));
}

}  // namespace
}  // namespace scan695::test
