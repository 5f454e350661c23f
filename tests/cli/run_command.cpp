#include "tests/cli/run_command.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <set>
#include <utility>

#include "tests/support/test.h"

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
    for (const auto& entry : fs::directory_iterator(directory_))
        names.insert(entry.path().filename().string());
    for (const auto& entry : fs::directory_iterator(temp_))
        names.insert("TMPDIR/" + entry.path().filename().string());
    std::string text;
    for (const std::string& name : names) text += name + ' ';
    return text;
}

Outcome Sandbox::Run(const std::vector<std::string>& arguments, const Surroundings& around) {
    const pid_t process = Start(arguments, around);
    close(std::exchange(input_, -1));
    return Finish(process);
}

pid_t Sandbox::Start(const std::vector<std::string>& arguments, const Surroundings& around) {
    const std::string out = around.output.empty() ? (streams_ / "out").string() : around.output;
    std::vector<char*> argv = {const_cast<char*>("scan695")};
    for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const size_t size = around.input.size();
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0 ||
        write(ends[1], around.input.data(), size) != static_cast<ssize_t>(size))
        std::abort();
    fs::remove(streams_ / "out");  // of the run before
    const pid_t process = fork();
    if (process == 0) {
        dup2(ends[0], 0);
        dup2(open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 1);
        dup2(open((streams_ / "err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 2);
        setenv("TMPDIR", temp_.c_str(), 1);
        const rlimit limit = {around.file_limit, around.file_limit};
        if (around.file_limit != 0) setrlimit(RLIMIT_FSIZE, &limit);
        if (chdir(directory_.c_str()) == 0) execv(SCAN695_COMMAND, argv.data());
        _exit(127);
    }
    close(ends[0]);
    input_ = ends[1];
    return process;
}

Outcome Sandbox::Finish(pid_t process) {
    int status = 0;
    waitpid(process, &status, 0);
    if (input_ >= 0) close(std::exchange(input_, -1));
    return {WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status), OutputSoFar(),
            ReadWholeFile(streams_ / "err")};
}

std::string Sandbox::OutputSoFar() const {
    return ReadWholeFile(streams_ / "out");
}

}  // namespace scan695::test
