// The command from outside: arguments, exit statuses, streams, and what it leaves on disk.
#include <fnmatch.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "tests/cli/run_command.h"
#include "tests/support/golden.h"

namespace scan695 {
namespace {

namespace fs = std::filesystem;
using test::Outcome;

// A module without parts: the smallest input that converts.
std::string SmallObject() {
    std::string bytes =
        "\xE0\x05"
        "80166"
        "\x01m\xEC\x08\x04\xCC";
    for (char part = 0; part < 8; ++part) bytes += {'\xE2', '\xD7', part, '\0'};
    return bytes;
}

// Texts, with * for anything.
constexpr char SMALL_STF[] = "Attrib.0{\r\n*value=\"C166\";\r\n}\r\n";
constexpr char BANNER[] = "IEEE695 converter version 1.44 is running ...\n*";
constexpr char FAILED[] =
    "IEEE695 converter version 1.44 is running ...\n"
    "*File BAD.ABS not in TASKING IEEE-695 format\n\a\nPress ENTER to terminate\n";
constexpr char NOT_IEEE[] = "scan695: bad.abs: File BAD.ABS not in TASKING IEEE-695 format\n";
constexpr char INCOMPLETE[] = "scan695: old.stf: the output is incomplete (is the disk full[?])\n";
constexpr char CHECKED[] =
    "bad.abs: not for this scanner\n-: for this scanner\nnone: not for this scanner\n";
constexpr char NO_FILE[] = "scan695: none: No such file or directory\n";

void ExpectMatch(const std::string& text, const char* pattern) {
    EXPECT_EQ(fnmatch(pattern, text.c_str(), 0), 0) << "no " << pattern << ": " << text;
}

// Inputs, older outputs, and links for outputs.
struct Directory : test::Sandbox {
    Directory() {
        Write("a.abs", SmallObject());
        Write("bad.abs", "no object file");
        Write("bad.stf", "older");
        Write("old.stf", "older");
        chmod((directory() / "old.stf").c_str(), 0640);
        fs::create_directory(directory() / "sub");
        fs::create_symlink("old.stf", directory() / "link");
        fs::create_symlink("sub/new.stf", directory() / "dangling");
        fs::create_symlink("/dev/full", directory() / "full");
        fs::create_symlink("loop", directory() / "loop");
        fs::create_symlink("a.abs", directory() / "to_input");
    }
    void ExpectAsBefore() const {
        EXPECT_EQ(Listing(), "a.abs bad.abs bad.stf dangling full link loop old.stf sub to_input ");
        EXPECT_EQ(Read("a.abs"), SmallObject());
        EXPECT_EQ(Read("bad.stf"), "older");
        EXPECT_TRUE(fs::is_symlink(directory() / "link"));
        struct stat status;
        stat((directory() / "old.stf").c_str(), &status);
        EXPECT_EQ(status.st_mode & 0777, 0640u);
    }
};

const struct {
    std::vector<std::string> arguments;
    int status;
    const char* out = "";  // patterns
    const char* err = "";
    test::Surroundings around = {};
    const char* stf = "";                 // the file that then holds the result of a.abs
    std::vector<std::string> added = {};  // to what lies in the directory
} CASES[] = {
    {{"a.abs"}, 0, BANNER, "", {}, "a.stf", {"a.stf"}},
    {{"a.abs", "--debug", "--quiet"}, 0, "", "", {}, "a.stf", {"A.FST", "a.stf"}},
    {{"a.abs", "-o", "link", "--quiet"}, 0, "", "", {}, "old.stf"},
    {{"a.abs", "-o", "dangling", "--quiet"}, 0, "", "", {}, "sub/new.stf"},
    {{"a.abs", "-o", "/dev/null", "--quiet"}, 0},
    {{"a.abs", "-o", "-", "--quiet"}, 0, SMALL_STF},
    {{"-"}, 0, SMALL_STF, BANNER, {.input = SmallObject()}},
    {{"-", "-o", "b.stf"}, 0, BANNER, "", {.input = SmallObject()}, "b.stf", {"b.stf"}},
    {{"bad.abs"}, 1, FAILED, "scan695: bad.abs: conversion failed\n", {.input = "an answer\n"}},
    {{"bad.abs", "--quiet"}, 1, "", NOT_IEEE},
    {{"bad.abs", "--quiet", "--debug"}, 1, "", NOT_IEEE},
    {{"-", "--quiet"}, 1, "", "scan695: *", {.input = "nonsense"}},
    {{"missing.abs", "--quiet"}, 1, "", "scan695: missing.abs: Error: cannot open object/symbol *"},
    {{"."}, 1, "", "scan695: .: is a directory\n"},
    {{"a.abs", "-o", "full"}, 1, "*", "*full: cannot write the output: No space left*"},
    {{"a.abs", "-o", "loop"}, 1, "*", "*loop: cannot create: Too many*"},
    {{"a.abs", "-o", "sub"}, 1, "*", "*sub: cannot create: Is a directory*"},
    {{"a.abs", "-o", "none/x.stf"}, 1, "*", "*none/x.stf: cannot create: No such file*"},
    {{"a.abs", "-o", "a.abs/x.stf"}, 1, "*", "*a.abs/x.stf: cannot create: Not a directory*"},
    {{"a.abs", "-o", "to_input"}, 2, "", "*to_input: the output is the input file itself*"},
    {{"a.abs", "--quiet", "-o", "-"}, 1, "", "scan695: *", {.output = "/dev/full"}},
    // The library does not notice that the disk is full. 100 bytes are two whole records.
    {{"a.abs", "-o", "old.stf", "--quiet"}, 1, "", INCOMPLETE, {.file_limit = 90}},
    {{"a.abs", "-o", "old.stf", "--quiet"}, 1, "", INCOMPLETE, {.file_limit = 100}},
    {{"check", "a.abs"}, 0, "a.abs: for this scanner\n"},
    {{"check", "bad.abs", "-", "none"}, 1, CHECKED, NO_FILE, {.input = SmallObject()}},
    {{"--version"}, 0, "scan695 1.*"},
    {{"--help"}, 1, "", "*", {.output = "/dev/full"}},
    {{"show", "bad.abs"}, 1, "", "scan695: bad.abs: neither *"},
    {{"show", "a.abs", "--code"}, 0, "record *"},
    {{"show", "."}, 1, "", "scan695: .: is a directory\n"},
    {{"report", "a.abs", "-o", "-"}, 0, "<!DOCTYPE html>*</html>\n"},
    {{"report", "a.abs", "-o", "a.html"}, 0, "", "", {}, "", {"a.html"}},
    {{"report", "a.abs", "-o", "full"}, 1, "", "scan695: full: *"},
    {{"report", "a.abs", "-o", "none/x"}, 1, "", "scan695: none/x: cannot create: No such file*"},
};

TEST(Command, StatusStreamsAndFiles) {
    for (const auto& c : CASES) {
        SCOPED_TRACE(testing::PrintToString(c.arguments));
        Directory sandbox;
        const Outcome outcome = sandbox.Run(c.arguments, c.around);
        EXPECT_EQ(outcome.status, c.status);
        ExpectMatch(outcome.out, c.out);
        ExpectMatch(outcome.err, c.err);
        if (*c.stf != '\0') ExpectMatch(sandbox.Read(c.stf), SMALL_STF);
        EXPECT_EQ(sandbox.Read("old.stf") == "older", c.stf != std::string("old.stf"));
        for (const auto& name : c.added) EXPECT_TRUE(fs::remove(sandbox.directory() / name));
        sandbox.ExpectAsBefore();
    }
}

TEST(Command, WrongUsage) {
    Directory sandbox;
    const std::vector<std::string> cases[] = {
        {},
        {""},
        {"--unknown", "a.abs"},
        {"a.abs", "bad.abs"},
        {"a.abs", "-o"},
        {"a.abs", "--prompt"},
        {"check"},
        {"check", "a.abs", "-o", "x"},
        {"-", "--debug"},
        {"show"},
        {"verify", "a.fst", "--json"},
        {"a.abs", "-o", "a.abs"},
        {"report", "a.abs"},
        {"report", "a.abs", "-o", "to_input"},
        {"a.abs", "-o", "sub/../a.abs"},
        {"a.abs", "-o", "A.FST", "--debug"},
    };
    for (const auto& arguments : cases) {
        const Outcome outcome = sandbox.Run(arguments);
        EXPECT_EQ(outcome.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(outcome.out, "");
        ExpectMatch(outcome.err, "scan695: *");
    }
    sandbox.ExpectAsBefore();
}

TEST(Command, Help) {
    test::Sandbox sandbox;
    for (const char* name : {"", "convert", "check", "show", "verify", "elf", "report"}) {
        const std::vector<std::string> command(*name != '\0', name);
        std::vector<std::string> arguments = command;
        arguments.push_back("--help");
        const Outcome outcome = sandbox.Run(arguments);
        test::ExpectGolden(outcome.out + outcome.err,
                           std::string("cli/golden/help") + (*name ? "_" : "") + name + ".txt");
    }
}

TEST(Command, Verify) {
    test::Sandbox sandbox;
    const std::string sound = harness::ReadWholeFile(test::TESTS / "cli/golden/sound.fst");
    sandbox.Write("SOUND.FST", sound);
    sandbox.Write("CUT.FST", sound.substr(0, sound.size() - 1));
    EXPECT_EQ(sandbox.Run({"verify", "SOUND.FST"}).out, "");
    const Outcome damaged = sandbox.Run({"verify", "CUT.FST"});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_EQ(damaged.out, "CUT.FST: section basic sizes: runs beyond the end of the file\n");
    EXPECT_EQ(sandbox.Run({"show", "CUT.FST", "--json"}).status, 1);
}

// Ended from outside while standard input is copied, and while the library waits at its prompt.
TEST(Command, InterruptsLeaveNothingBehind) {
    const struct {
        std::vector<std::string> arguments;
        int signal_number;
        const char* console;  // what shows that it waits; null for a temporary file
    } cases[] = {
        {{"-", "-o", "x.stf"}, SIGTERM, nullptr},
        {{"-", "-o", "x.stf"}, SIGINT, nullptr},
    };
    for (const auto& c : cases) {
        Directory sandbox;
        const pid_t process = sandbox.Start(c.arguments);
        const auto waits = [&] {
            return c.console == nullptr
                       ? sandbox.Listing().find("TMPDIR/") != std::string::npos
                       : sandbox.OutputSoFar().find(c.console) != std::string::npos;
        };
        for (int i = 0; i < 1000 && !waits(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        EXPECT_NE(sandbox.Listing().find(".scan695-"), std::string::npos);
        kill(process, c.signal_number);
        EXPECT_EQ(sandbox.Finish(process).status, 128 + c.signal_number);
        sandbox.ExpectAsBefore();
    }
}

}  // namespace
}  // namespace scan695
