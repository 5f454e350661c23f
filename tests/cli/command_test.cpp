// The command from outside: command lines with what they print and leave on disk as transcripts,
// and what needs a hand at the right moment: signals, children that die, long runs.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <string.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <thread>

#include "tests/cli/transcript.h"
#include "tests/support/golden.h"

namespace scan695 {
namespace {

using Clock = std::chrono::steady_clock;
using test::Sandbox;

void Sleep(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void ExpectAsTold(const std::string& name) {
    const std::string file = "cli/transcripts/" + name + ".txt";
    test::ExpectGolden(test::Replay(test::ReadWholeFile(test::TESTS / file)), file);
}

TEST(Command, DoesAsTheTranscriptsTell) {
    for (const char* name : {"convert", "errors", "several", "questions"}) ExpectAsTold(name);
}

TEST(Command, DoesAsToldWhenTheDiskIsFull) {
    const Sandbox sandbox;
    if (sandbox.Wait(sandbox.Start("unshare -rm mount -t tmpfs none .")) != 0)
        GTEST_SKIP() << "no file system of its own to fill";
    ExpectAsTold("full_disk");
}

TEST(Command, Help) {
    std::string script;
    for (const char* name : {"", "convert", "check", "show", "find", "type", "size", "diff",
                             "verify", "elf", "report"})
        script += std::string("scan695 ") + name + " --help; echo; ";
    const Sandbox sandbox;
    sandbox.Wait(sandbox.Start(script));
    test::ExpectGolden(sandbox.Output() + sandbox.Errors(), "cli/golden/help.txt");
}

// A command whose conversion is held up; the child of the process, 0 if there is none (any more).
struct HeldUp {
    const Sandbox& sandbox;
    pid_t process = 0;
    pid_t child = 0;

    HeldUp(const Sandbox& place, const std::string& command) : sandbox(place) {
        for (int attempt = 0; attempt < 100 && child == 0; ++attempt) {
            process = sandbox.Start("exec " + command);
            const std::string children = "/proc/" + std::to_string(process) + "/task/" +
                                         std::to_string(process) + "/children";
            while (child == 0 && kill(process, 0) == 0 && !IsZombie())
                std::ifstream(children) >> child;
            if (child != 0 && kill(child, SIGSTOP) == 0) break;
            child = 0;
            sandbox.Wait(process);
        }
    }
    bool IsZombie() const {
        std::string word;
        std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
        return stat >> word >> word >> word && word == "Z";
    }
};

// At a moment when the conversion will not end by itself, in every mode.
TEST(Command, SignalsEndItAtOnceWithNothingLeftBehind) {
    const char* const modes[] = {
        "scan695 big.abs",
        "scan695 big.abs --debug",
        "scan695 big.abs -o - --fst b.fst",
        "scan695 -j 3 big.abs none nix -q",
        "scan695 show big.abs",
        "scan695 check big.abs",
    };
    for (const char* mode : modes) {
        for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
            const Sandbox sandbox;
            auto before = sandbox.Files();
            const HeldUp held(sandbox, mode);
            ASSERT_NE(held.child, 0) << mode;
            Sleep(20);
            const auto start = Clock::now();
            kill(held.process, number);
            EXPECT_EQ(sandbox.Wait(held.process), 128 + number) << mode;
            EXPECT_LT(Clock::now() - start, std::chrono::milliseconds(200)) << mode;
            EXPECT_NE(kill(held.child, 0), 0);
            EXPECT_EQ(sandbox.Files(), before);
        }
    }
}

TEST(Command, TellsOfAChildThatDies) {
    for (const int number : {SIGKILL, SIGSEGV}) {
        const Sandbox sandbox;
        const auto before = sandbox.Files();
        const HeldUp held(sandbox, "scan695 big.abs --debug -o /dev/null");
        kill(held.child, number);
        kill(held.child, SIGCONT);
        EXPECT_EQ(sandbox.Wait(held.process), 1);
        EXPECT_EQ(sandbox.Errors(), "scan695: big.abs: the conversion was ended by signal " +
                                        std::to_string(number) + " (" + strsignal(number) + ")\n");
        EXPECT_EQ(sandbox.Files(), before);
    }
}

// The parent process may have signals ignored; an interrupt from the keyboard reaches the child
// too.
TEST(Command, IgnoresWhatItsParentIgnores) {
    const Sandbox sandbox;
    const HeldUp held(sandbox, "bash -c \"trap '' HUP INT; exec scan695 big.abs --fst x -o y\"");
    for (const int number : {SIGHUP, SIGINT}) {
        kill(held.process, number);
        kill(held.child, number);
    }
    kill(held.child, SIGCONT);
    EXPECT_EQ(sandbox.Wait(held.process), 0);
    EXPECT_EQ(sandbox.Errors(), "");
    EXPECT_TRUE(sandbox.Files().contains("x"));
}

TEST(Command, ShowsOnATerminalThatALongRunMoves) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    const Sandbox sandbox;
    const HeldUp held(sandbox, "scan695 big.abs 2>" + std::string(ptsname(terminal)));
    std::string shown;
    const auto read_on = [&](const char* until) {
        char bytes[1000];
        pollfd end = {terminal, POLLIN, 0};
        while (shown.find(until) == std::string::npos && poll(&end, 1, 20000) == 1) {
            const ssize_t count = read(terminal, bytes, sizeof bytes);
            if (count <= 0) break;
            shown.append(bytes, static_cast<size_t>(count));
        }
    };
    read_on(" s\r");  // one line gives way to the next
    EXPECT_TRUE(shown.starts_with("scan695: big.abs: converting, ")) << shown;
    kill(held.child, SIGCONT);
    EXPECT_EQ(sandbox.Wait(held.process), 0);
    close(terminal);
}

}  // namespace
}  // namespace scan695
