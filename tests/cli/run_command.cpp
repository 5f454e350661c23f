#include "tests/cli/run_command.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <set>

#include "tests/support/convert.h"

namespace scan695::test {

namespace fs = std::filesystem;

Sandbox::Sandbox()
    : directory_(ScratchDirectory()), temp_(ScratchDirectory()), streams_(ScratchDirectory()) {}

void Sandbox::Write(const std::string& name, const std::string& bytes) const {
    WriteWholeFile(directory_ / name, {bytes.begin(), bytes.end()});
}

std::string Sandbox::Read(const std::string& name) const {
    return ReadWholeFile(directory_ / name);
}

std::string Sandbox::Listing() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory_)) {
        names.insert(entry.path().filename().string());
    }
    for (const auto& entry : fs::directory_iterator(temp_)) {
        names.insert("TMPDIR/" + entry.path().filename().string());
    }
    std::string text;
    for (const std::string& name : names) text += name + ' ';
    return text;
}

Outcome Sandbox::Run(const std::vector<std::string>& arguments, const Surroundings& around) const {
    WriteWholeFile(streams_ / "in", {around.input.begin(), around.input.end()});
    const int input = open((streams_ / "in").c_str(), O_RDONLY | O_CLOEXEC);
    const pid_t process = Launch(arguments, around, input);
    close(input);
    return Collect(process);
}

pid_t Sandbox::Start(const std::vector<std::string>& arguments) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) std::abort();
    silence_ = ends[1];
    fs::remove(streams_ / "out");  // of the run before
    const pid_t process = Launch(arguments, {}, ends[0]);
    close(ends[0]);
    return process;
}

Outcome Sandbox::Finish(pid_t process) {
    const Outcome outcome = Collect(process);
    close(silence_);
    return outcome;
}

std::string Sandbox::OutputSoFar() const {
    return ReadWholeFile(streams_ / "out");
}

pid_t Sandbox::Launch(const std::vector<std::string>& arguments, const Surroundings& around,
                      int input) const {
    const std::string out = around.output.empty() ? (streams_ / "out").string() : around.output;
    std::vector<char*> argv = {const_cast<char*>("scan695")};
    for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const pid_t process = fork();
    if (process != 0) return process;

    const int output = open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const int error = open((streams_ / "err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    dup2(input, 0);
    dup2(output, 1);
    dup2(error, 2);
    setenv("TMPDIR", temp_.c_str(), 1);
    if (around.file_limit != 0) {
        const rlimit limit = {around.file_limit, around.file_limit};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    if (chdir(directory_.c_str()) == 0) execv(SCAN695_COMMAND, argv.data());
    _exit(127);
}

Outcome Sandbox::Collect(pid_t process) const {
    int status = 0;
    waitpid(process, &status, 0);
    return {WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status),
            ReadWholeFile(streams_ / "out"), ReadWholeFile(streams_ / "err")};
}

}  // namespace scan695::test
