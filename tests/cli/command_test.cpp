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
#include <memory>
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

std::string WordOf(const std::string& path, int number) {
    std::ifstream file(path);
    std::string word;
    while (number-- > 0 && file >> word) {
    }
    return number == -1 ? word : std::string();
}

// A command whose conversion is held up, in a folder of its own.
struct HeldUp {
    std::unique_ptr<Sandbox> sandbox;
    std::map<std::string, std::string> before;  // what lay in the folder
    pid_t process = 0;
    pid_t child = 0;

    explicit HeldUp(const std::string& command) {
        do {  // until the child is caught in time
            sandbox = std::make_unique<Sandbox>();
            sandbox->Wait(sandbox->Start("mkfifo pipe"));
            before = sandbox->Files();
            process = sandbox->Start(command);
        } while (!CatchChild());
    }
    bool CatchChild() {
        const std::string own = "/proc/" + std::to_string(process);
        const std::string list = own + "/task/" + std::to_string(process) + "/children";
        while (WordOf(own + "/stat", 3) != "Z") {
            const std::string found = WordOf(list, 1);
            const std::string stat = "/proc/" + found + "/stat";
            if (WordOf(stat, 2) != "(scan695)") continue;
            child = std::stoi(found);
            kill(child, SIGSTOP);
            while (WordOf(stat, 3) == "R" || WordOf(stat, 3) == "S") Sleep(1);
            if (WordOf(stat, 3) == "T") return true;
        }
        sandbox->Wait(process);
        return false;
    }
};

// At a moment when the conversion will not end by itself, in every mode, within 0.2 s. A loaded
// machine can be late many a time, a command that waits for something is late every time.
TEST(Command, SignalsEndItAtOnceWithNothingLeftBehind) {
    const char* const modes[] = {
        "exec scan695 big.abs",
        "exec scan695 big.abs --debug",
        "exec scan695 big.abs -o - --fst b.fst",
        "exec scan695 -j 3 big.abs none nix -q",
        "exec scan695 show big.abs",
        "exec scan695 check big.abs",
        // in a folder that another conversion has left
        "( : >pipe & ); exec scan695 -j 1 -q -o . pipe big.abs",
    };
    constexpr int ATTEMPTS = 20;
    for (const char* mode : modes) {
        for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
            bool is_late = true;
            for (int i = 0; i < ATTEMPTS && is_late; ++i) {
                const HeldUp held(mode);
                Sleep(20);
                const auto start = Clock::now();
                kill(held.process, number);
                EXPECT_EQ(held.sandbox->Wait(held.process), 128 + number) << mode;
                is_late = Clock::now() - start > std::chrono::milliseconds(200);
                EXPECT_NE(kill(held.child, 0), 0) << mode;
                EXPECT_EQ(held.sandbox->Files(), held.before) << mode;
            }
            EXPECT_FALSE(is_late) << mode;
        }
    }
}

TEST(Command, TellsOfAChildThatDies) {
    for (const int number : {SIGKILL, SIGXCPU}) {
        const HeldUp held("exec scan695 big.abs --debug -o /dev/null");
        kill(held.child, number);
        kill(held.child, SIGCONT);
        EXPECT_EQ(held.sandbox->Wait(held.process), 1);
        EXPECT_EQ(held.sandbox->Errors(), "scan695: big.abs: the conversion was ended by signal " +
                                              std::to_string(number) + " (" + strsignal(number) +
                                              ")\n");
        EXPECT_EQ(held.sandbox->Files(), held.before);
    }
}

// The parent process may have signals ignored; an interrupt from the keyboard reaches the child
// too.
TEST(Command, IgnoresWhatItsParentIgnores) {
    const HeldUp held("trap '' HUP INT; exec scan695 big.abs --fst x -o y");
    for (const int number : {SIGHUP, SIGINT}) kill(held.process, number);
    kill(held.child, SIGCONT);
    while (kill(held.child, SIGINT) == 0 &&
           WordOf("/proc/" + std::to_string(held.process) + "/stat", 3) != "Z")
        Sleep(1);
    EXPECT_EQ(held.sandbox->Wait(held.process), 0);
    EXPECT_EQ(held.sandbox->Errors(), "");
    EXPECT_TRUE(held.sandbox->Files().contains("x"));
}

TEST(Command, ShowsOnATerminalThatALongRunMoves) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    const HeldUp held("exec scan695 big.abs 2>" + std::string(ptsname(terminal)));
    std::string shown;
    char bytes[1000];
    pollfd end = {terminal, POLLIN, 0};
    // Until one line has given way to the next.
    while (shown.find(" s\r") == std::string::npos && poll(&end, 1, 60000) == 1) {
        const ssize_t count = read(terminal, bytes, sizeof bytes);
        if (count <= 0) break;
        shown.append(bytes, static_cast<size_t>(count));
    }
    EXPECT_TRUE(shown.starts_with("scan695: big.abs: converting, ")) << shown;
    kill(held.child, SIGCONT);
    EXPECT_EQ(held.sandbox->Wait(held.process), 0);
    close(terminal);
}

}  // namespace
}  // namespace scan695
