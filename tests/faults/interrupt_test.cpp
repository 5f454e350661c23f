// An interrupt is honoured in the post-processing of a debug run and nowhere else.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "harness/in_process.h"
#include "tests/faults/hooks.h"
#include "tests/support/samples.h"
#include "tests/support/test.h"

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
        {Moment::LOAD, false, false},       {Moment::LOAD, true, true},
        {Moment::POST_PROCESS, true, true}, {Moment::RANGES, true, true},
        {Moment::SAVE, true, false},
    };
    const fs::path directory = ScratchDirectory();
    WriteWholeFile(directory / "t.abs", SampleBytes("c166.abs"));
    for (const auto& c : cases) {
        Faults = Hooks();
        const Converted sound = ConvertInProcess(directory / "t.abs", directory / "t.stf", c.debug);
        EXPECT_EQ(sound.status, 0) << "behind an aborted run";
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

// Enough symbols that their sorting takes a while.
Bytes LargeFile() {
    Bytes symbols;
    for (uint32_t i = 0; i < 50000; ++i)
        symbols += PublicSymbol(32, "s" + std::to_string(i * 7919 % 100003), 16, 19, i);
    return Build({.external = symbols + Bytes{0xE0}});
}

// Reads the console of the child until the text has come, or to its end.
std::string ReadUpTo(const std::string& text, std::FILE* console) {
    std::string seen;
    for (int c = 0; (seen.empty() || !seen.ends_with(text)) && (c = std::getc(console)) != EOF;)
        seen += static_cast<char>(c);
    return seen;
}

// While the scan reads the symbols, and while they are sorted.
TEST(Interrupt, OfAnotherProcess) {
    const fs::path directory = ScratchDirectory();
    WriteWholeFile(directory / "t.abs", LargeFile());
    for (const char* moment : {"Ext symbol: ", "Sorting..."}) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0) {
            dup2(open("/dev/null", O_RDONLY), 0);
            dup2(ends[1], 1);
            close(ends[0]), close(ends[1]);
            std::setvbuf(stdout, nullptr, _IOLBF, 4096);
            std::_Exit(RunConvert(directory / "t.abs", directory / "t.stf", true));
        }
        close(ends[1]);
        std::FILE* console = fdopen(ends[0], "r");
        ReadUpTo(moment, console);
        kill(child, SIGINT);
        EXPECT_TRUE(ReadUpTo("no such text", console).ends_with(ABORTED + PROMPT)) << moment;
        int status = 0;
        waitpid(child, &status, 0);
        std::fclose(console);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << moment << status;
        EXPECT_FALSE(fs::exists(directory / "T.FST")) << moment;
        EXPECT_TRUE(ReadWholeFile(directory / "t.stf").ends_with("}\r\n")) << moment;
    }
}

}  // namespace
}  // namespace scan695::test
