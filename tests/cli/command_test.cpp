// The command from outside: arguments, exit statuses, streams, and what it leaves on disk.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <thread>

#include "tests/cli/run_command.h"
#include "tests/support/convert.h"

namespace scan695 {
namespace {

namespace fs = std::filesystem;
using test::Outcome;
using test::Sandbox;

// A module without parts: the smallest input that converts.
std::string SmallObject() {
    std::string bytes =
        "\xE0\x05"
        "80166"
        "\x01m\xEC\x08\x04\xCC";
    for (char part = 0; part < 8; ++part) bytes += {'\xE2', '\xD7', part, '\0'};
    return bytes;
}

bool IsSmallStf(const std::string& stf) {
    return stf.starts_with("Attrib.0{\r\n") && stf.ends_with("value=\"C166\";\r\n}\r\n");
}

constexpr char BANNER[] = "IEEE695 converter version 1.44 is running ...\n";
constexpr char NOT_IEEE[] = "File BAD.ABS not in TASKING IEEE-695 format";

class Command : public testing::Test {
  protected:
    Command() {
        sandbox.Write("a.abs", SmallObject());
        sandbox.Write("bad.abs", "no object file");
    }
    void ExpectLeft(const std::string& names) { EXPECT_EQ(sandbox.Listing(), names); }

    Sandbox sandbox;
};

void ExpectGolden(const std::string& text, const char* name) {
    const fs::path golden = fs::path(SCAN695_SOURCE_DIR "/tests/cli/golden") / name;
    if (std::getenv("SCAN695_RENEW_GOLDEN") != nullptr) {
        test::WriteWholeFile(golden, {text.begin(), text.end()});
    }
    EXPECT_EQ(text, test::ReadWholeFile(golden));
}

TEST_F(Command, Help) {
    for (const char* option : {"--help", "-h"}) {
        const Outcome main = sandbox.Run({option});
        EXPECT_EQ(main.status, 0);
        ExpectGolden(main.out, "help.txt");
        const Outcome fst = sandbox.Run({"fst", option});
        EXPECT_EQ(fst.status, 0);
        ExpectGolden(fst.out, "fst_help.txt");
        EXPECT_EQ(main.err + fst.err, "");
    }
    EXPECT_TRUE(sandbox.Run({"--version"}).out.starts_with("scan695 1."));
    EXPECT_EQ(sandbox.Run({"--help"}, {"", "/dev/full", 0}).status, 1);
}

TEST_F(Command, WrongUsage) {
    const std::vector<std::string> cases[] = {
        {},
        {""},
        {"--unknown", "a.abs"},
        {"a.abs", "bad.abs"},
        {"a.abs", "-o"},
        {"a.abs", "--quiet", "--prompt"},
        {"--check"},
        {"--check", "a.abs", "-o", "x"},
        {"-", "--debug"},
        {"fst"},
        {"fst", "a.fst", "--verify", "--json"},
        {"fst", "a.fst", "--verify", "--types"},
        {"a.abs", "-o", "a.abs"},
        {"a.abs", "-o", "../" + sandbox.directory().filename().string() + "/a.abs"},
        {"a.abs", "-o", "A.FST", "--debug"},
    };
    for (const auto& arguments : cases) {
        const Outcome outcome = sandbox.Run(arguments);
        EXPECT_EQ(outcome.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(outcome.err.starts_with("scan695: ")) << outcome.err;
    }
    ExpectLeft("a.abs bad.abs ");
}

TEST_F(Command, ConvertsBesideTheInput) {
    const Outcome outcome = sandbox.Run({"a.abs"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.out.starts_with(BANNER)) << outcome.out;
    EXPECT_EQ(outcome.err, "");
    EXPECT_TRUE(IsSmallStf(sandbox.Read("a.stf")));
    ExpectLeft("a.abs a.stf bad.abs ");
}

TEST_F(Command, DebugWritesAnFstFileThatVerifies) {
    EXPECT_EQ(sandbox.Run({"a.abs", "--debug", "--quiet"}).status, 0);
    ExpectLeft("A.FST a.abs a.stf bad.abs ");
    const Outcome verified = sandbox.Run({"fst", "A.FST", "--verify"});
    EXPECT_EQ(verified.status, 0);
    EXPECT_EQ(verified.out + verified.err, "");

    sandbox.Write("CUT.FST", sandbox.Read("A.FST").substr(0, 140));
    const Outcome damaged = sandbox.Run({"fst", "CUT.FST", "--verify"});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_EQ(damaged.out, "CUT.FST: section basic sizes: runs beyond the end of the file\n");
    EXPECT_EQ(sandbox.Run({"fst", "CUT.FST", "--json"}).status, 1);
    EXPECT_EQ(sandbox.Run({"fst", "a.stf"}).err, "scan695: a.stf: not an FST file\n");
    EXPECT_EQ(sandbox.Run({"fst", "."}).err, "scan695: .: is a directory\n");
}

TEST_F(Command, StandardStreams) {
    const Outcome both = sandbox.Run({"-"}, {SmallObject(), "", 0});
    EXPECT_EQ(both.status, 0);
    EXPECT_TRUE(IsSmallStf(both.out)) << both.out;
    EXPECT_TRUE(both.err.starts_with(BANNER)) << both.err;

    const Outcome out = sandbox.Run({"a.abs", "-o", "-", "--quiet"});
    EXPECT_EQ(out.out, both.out);
    EXPECT_EQ(out.err, "");

    EXPECT_EQ(sandbox.Run({"-", "-o", "b.stf"}, {SmallObject(), "", 0}).status, 0);
    EXPECT_EQ(sandbox.Read("b.stf"), both.out);
    EXPECT_EQ(sandbox.Run({"-", "--quiet"}, {"nonsense", "", 0}).out, "");
    ExpectLeft("a.abs b.stf bad.abs ");
}

// A fatal stop: the message where it belongs, nothing left behind, an older output as it was.
TEST_F(Command, FatalStop) {
    sandbox.Write("bad.stf", "older");
    const Outcome plain = sandbox.Run({"bad.abs"}, {"an answer\n", "", 0});
    EXPECT_EQ(plain.status, 1);
    EXPECT_TRUE(plain.out.starts_with(BANNER));
    EXPECT_TRUE(plain.out.ends_with(std::string(NOT_IEEE) + "\n\a\nPress ENTER to terminate\n"))
        << plain.out;
    EXPECT_EQ(plain.err, "scan695: bad.abs: conversion failed\n");

    for (const bool debug : {false, true}) {
        std::vector<std::string> arguments = {"bad.abs", "--quiet"};
        if (debug) arguments.push_back("--debug");
        const Outcome quiet = sandbox.Run(arguments);
        EXPECT_EQ(quiet.status, 1);
        EXPECT_EQ(quiet.out, "");
        EXPECT_EQ(quiet.err, std::string("scan695: bad.abs: ") + NOT_IEEE + "\n");
    }
    EXPECT_EQ(sandbox.Run({"missing.abs", "--quiet"}).err,
              "scan695: missing.abs: Error: cannot open object/symbol file\n");
    EXPECT_EQ(sandbox.Run({"."}).err, "scan695: .: is a directory\n");
    EXPECT_EQ(sandbox.Read("bad.stf"), "older");
    ExpectLeft("a.abs bad.abs bad.stf ");
}

TEST_F(Command, Outputs) {
    fs::create_directory(sandbox.directory() / "sub");
    sandbox.Write("old.stf", "older");
    chmod((sandbox.directory() / "old.stf").c_str(), 0640);
    const auto link = [&](const char* target, const char* name) {
        fs::create_symlink(target, sandbox.directory() / name);
    };
    link("old.stf", "link");
    link("sub/new.stf", "dangling");
    link("/dev/full", "full");
    link("loop", "loop");
    link("a.abs", "to_input");
    const struct {
        const char* out;
        int status;
        const char* error;    // a part of the line
        const char* written;  // the file that then holds the result; "" for none
    } cases[] = {
        {"link", 0, "", "old.stf"},
        {"dangling", 0, "", "sub/new.stf"},
        {"/dev/null", 0, "", ""},
        {"full", 1, "full: cannot write the output: No space left", ""},
        {"loop", 1, "loop: cannot create: Too many", ""},
        {"sub", 1, "sub: cannot create: Is a directory", ""},
        {"none/x.stf", 1, "none/x.stf: cannot create: No such file", ""},
        {"a.abs/x.stf", 1, "a.abs/x.stf: cannot create: Not a directory", ""},
        {"to_input", 2, "to_input: the output is the input file itself", ""},
    };
    for (const auto& c : cases) {
        const Outcome outcome = sandbox.Run({"a.abs", "--quiet", "-o", c.out});
        EXPECT_EQ(outcome.status, c.status) << c.out;
        EXPECT_NE(outcome.err.find(c.error), std::string::npos) << outcome.err;
        EXPECT_EQ(outcome.err.empty(), c.status == 0) << outcome.err;
        const bool is_written = *c.written != '\0';
        EXPECT_TRUE(!is_written || IsSmallStf(sandbox.Read(c.written))) << c.out;
    }
    EXPECT_TRUE(fs::is_symlink(sandbox.directory() / "link"));
    struct stat status;
    stat((sandbox.directory() / "old.stf").c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
    EXPECT_EQ(sandbox.Run({"a.abs", "-o", "-"}, {"", "/dev/full", 0}).status, 1);
    ExpectLeft("a.abs bad.abs dangling full link loop old.stf sub to_input ");
    EXPECT_EQ(sandbox.Read("a.abs"), SmallObject());
}

// The library does not notice that the disk is full. 100 bytes are two whole records.
TEST_F(Command, IncompleteOutput) {
    sandbox.Write("a.stf", "older");
    for (const unsigned long limit : {90UL, 100UL}) {
        const Outcome outcome = sandbox.Run({"a.abs", "--quiet"}, {"", "", limit});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err, "scan695: a.stf: the output is incomplete (is the disk full?)\n");
        EXPECT_EQ(sandbox.Read("a.stf"), "older");
    }
    ExpectLeft("a.abs a.stf bad.abs ");
}

TEST_F(Command, Check) {
    const Outcome one = sandbox.Run({"--check", "a.abs"});
    EXPECT_EQ(one.status, 0);
    EXPECT_EQ(one.out, "a.abs: for this scanner\n");
    const Outcome many = sandbox.Run({"--check", "bad.abs", "-", "none"}, {SmallObject(), "", 0});
    EXPECT_EQ(many.status, 1);
    EXPECT_EQ(many.out,
              "bad.abs: not for this scanner\n-: for this scanner\nnone: not for this scanner\n");
    EXPECT_EQ(many.err, "scan695: none: No such file or directory\n");
    ExpectLeft("a.abs bad.abs ");
}

void WaitFor(const std::function<bool()>& condition) {
    for (int i = 0; i < 1000 && !condition(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ASSERT_TRUE(condition());
}

// Ended from outside while standard input is copied, and while the library waits at its prompt.
TEST_F(Command, InterruptsLeaveNothingBehind) {
    const struct {
        std::vector<std::string> arguments;
        int signal_number;
        const char* console;  // what shows that it waits; null for a temporary file
    } cases[] = {
        {{"-", "-o", "x.stf"}, SIGTERM, nullptr},
        {{"-", "-o", "x.stf"}, SIGINT, nullptr},
        {{"bad.abs", "--prompt"}, SIGTERM, "Press ENTER"},
        {{"bad.abs", "--prompt"}, SIGHUP, "Press ENTER"},
    };
    for (const auto& c : cases) {
        const pid_t process = sandbox.Start(c.arguments);
        WaitFor([&] {
            return c.console == nullptr
                       ? sandbox.Listing().find("TMPDIR/") != std::string::npos
                       : sandbox.OutputSoFar().find(c.console) != std::string::npos;
        });
        EXPECT_NE(sandbox.Listing().find(".scan695-"), std::string::npos);
        kill(process, c.signal_number);
        EXPECT_EQ(sandbox.Finish(process).status, 128 + c.signal_number);
        ExpectLeft("a.abs bad.abs ");
    }
}

}  // namespace
}  // namespace scan695
