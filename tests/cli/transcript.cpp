#include "tests/cli/transcript.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "include/scan695.h"
#include "tests/support/test.h"

namespace scan695::test {

namespace fs = std::filesystem;

namespace {

// A module with one symbol and one block of code.
ObjectFile SmallObject(const char* processor) {
    return {.processor = processor,
            .segments = Segment(1, Memory::CODE, "TEXT", 0x1000, 0x10),
            .debug = Bb1("M", {}) + Bb3("M", GlobalVariable(0x46, "g", 16, 0x2000)),
            .data = UseSegment(1) + Load({1, 2, 3})};
}

ObjectFile OddObject() {
    ObjectFile file = SmallObject("80166");
    file.debug =
        Bb5("lost.c", Line(0x46, 1, 0x1000)) +
        Bb1("M", NamedType(0x47, "t", 262, def::OtherTypedef(304))) +
        Bb3("M", GlobalVariable(0x48, "g", 90, 0x2000) + GlobalVariable(0x49, "h", 90, 0x2000));
    return file;
}

ObjectFile BigObject() {
    ObjectFile file = SmallObject("tricore");
    Bytes body;
    for (uint32_t i = 0; i < 20000; ++i)
        body += GlobalVariable(0x46 + i, "g" + std::to_string(i), 16, 0x2000 + 2 * i);
    file.debug = Bb1("M", {}) + Bb3("M", body);
    return file;
}

// What the library itself makes of a.abs, and what that is called in a transcript.
const std::map<std::string, std::string>& KnownContents() {
    static const auto known = [] {
        const Bytes bytes = Build(SmallObject("80166"));
        const fs::path folder = ScratchDirectory();
        WriteWholeFile(folder / "a.abs", bytes);
        const Converted debug = InChild([&] {
            fs::current_path(folder);
            return Convert(0, "a.abs", "a.stf", 1) == nullptr ? 0 : 98;
        });
        return std::map<std::string, std::string>{
            {std::string(bytes.begin(), bytes.end()), "a.abs"},
            {ConvertBytes(bytes).stf, "STF"},
            {ReadWholeFile(folder / "a.stf"), "STF with comments"},
            {ReadWholeFile(folder / "A.FST"), "FST"},
            {debug.console, "trace"}};
    }();
    return known;
}

std::string Described(const std::string& bytes) {
    const auto known = KnownContents().find(bytes);
    if (known != KnownContents().end()) return known->second;
    const bool is_text = bytes.size() < 60 && std::all_of(bytes.begin(), bytes.end(), [](char c) {
                             return c >= ' ' || c == '\n';
                         });
    if (!is_text) return std::to_string(bytes.size()) + " bytes";
    return '"' + bytes.substr(0, bytes.find('\n')) + '"';
}

std::string StreamLines(const std::string& mark, const std::string& bytes) {
    if (KnownContents().contains(bytes)) return mark + Described(bytes) + '\n';
    std::string text;
    std::istringstream lines(bytes);
    for (std::string line; std::getline(lines, line);) text += mark + line + '\n';
    return text;
}

std::string Changes(const std::map<std::string, std::string>& before,
                    const std::map<std::string, std::string>& after) {
    std::string text;
    for (const auto& [name, what] : after) {
        const auto old = before.find(name);
        if (old != before.end() && old->second == what) continue;
        text += (old == before.end() ? "+ " : "~ ") + name + "  " + what + '\n';
    }
    for (const auto& [name, what] : before)
        if (!after.contains(name)) text += "- " + name + '\n';
    return text;
}

std::string Play(const Sandbox& sandbox, const std::string& command) {
    const auto before = sandbox.Files();
    const int status = sandbox.Wait(sandbox.Start(command));
    std::string text = StreamLines("1> ", sandbox.Output()) + StreamLines("2> ", sandbox.Errors());
    if (status != 0) text += "status " + std::to_string(status) + '\n';
    return text + Changes(before, sandbox.Files());
}

}  // namespace

Sandbox::Sandbox()
    : folder_(ScratchDirectory()), temp_(ScratchDirectory()), streams_(ScratchDirectory()) {
    static const Bytes big = Build(BigObject());
    const std::vector<uint8_t> small = Build(SmallObject("80166"));
    WriteWholeFile(folder_ / "a.abs", small);
    WriteWholeFile(folder_ / "odd.abs", Build(SmallObject("tricore")));
    WriteWholeFile(folder_ / "warn.abs", Build(OddObject()));
    WriteWholeFile(folder_ / "big.abs", big);
    const auto half = static_cast<long>(small.size() / 2);
    WriteWholeFile(folder_ / "cut.abs", {small.begin(), small.begin() + half});
    WriteWholeFile(folder_ / "bad.abs", {'n', 'o', ' ', 'o', 'b', 'j', 'e', 'c', 't'});
}

pid_t Sandbox::Start(const std::string& command) const {
    const pid_t process = fork();
    if (process != 0) return process;
    const auto open_as = [&](int descriptor, const fs::path& path, int flags) {
        dup2(open(path.c_str(), flags, 0644), descriptor);
    };
    open_as(0, "/dev/null", O_RDONLY);
    open_as(1, streams_ / "out", O_WRONLY | O_CREAT | O_TRUNC);
    open_as(2, streams_ / "err", O_WRONLY | O_CREAT | O_TRUNC);
    for (const int number : {SIGHUP, SIGINT, SIGTERM})
        signal(number, SIG_DFL);  // whatever runs the tests in the background ignores some
    for (const unsigned long capability : {1, 2})
        prctl(PR_CAPBSET_DROP, capability);  // permissions hold for root as well
    const std::string path =
        fs::path(SCAN695_COMMAND).parent_path().string() + ':' + std::getenv("PATH");
    setenv("PATH", path.c_str(), 1);
    setenv("TMPDIR", temp_.c_str(), 1);
    setenv("LC_ALL", "C", 1);
    const std::string script = "set -o pipefail; " + command;
    if (chdir(folder_.c_str()) == 0) execlp("bash", "bash", "-c", script.c_str(), nullptr);
    _exit(127);
}

int Sandbox::Wait(pid_t process) const {
    int status = 0;
    waitpid(process, &status, 0);
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

std::string Sandbox::Output() const {
    return ReadWholeFile(streams_ / "out");
}

std::string Sandbox::Errors() const {
    return ReadWholeFile(streams_ / "err");
}

std::map<std::string, std::string> Sandbox::Files() const {
    std::map<std::string, std::string> files;
    const auto list = [&](const fs::path& folder, const std::string& prefix) {
        for (const auto& entry : fs::recursive_directory_iterator(
                 folder, fs::directory_options::skip_permission_denied)) {
            std::string& what = files[prefix + entry.path().lexically_relative(folder).string()];
            if (entry.is_symlink()) {
                what = "-> " + fs::read_symlink(entry.path()).string();
            } else {
                what = entry.is_regular_file() ? Described(ReadWholeFile(entry.path()))
                       : entry.is_directory()  ? "folder"
                                               : "special";
            }
        }
    };
    list(folder_, "");
    list(temp_, "TMPDIR/");
    return files;
}

std::string Replay(const std::string& transcript) {
    std::string text;
    std::string preparation = ":";
    std::istringstream lines(transcript);
    for (std::string line; std::getline(lines, line);) {
        const bool is_preparation = line.starts_with("< ");
        const bool is_command = line.starts_with("$ ");
        if (line.empty() || line[0] == '#' || is_preparation || is_command) text += line + '\n';
        if (is_preparation) preparation += "; " + line.substr(2);
        if (!is_command) continue;
        const Sandbox sandbox;
        sandbox.Wait(sandbox.Start(preparation));
        text += Play(sandbox, line.substr(2));
        preparation = ":";
    }
    return text;
}

}  // namespace scan695::test
