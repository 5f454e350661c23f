// Runs the command as a user would, in a scratch directory of its own.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace scan695::test {

struct Outcome {
    int status = -1;  // exit status; 128 + n for a signal
    std::string out;  // standard output
    std::string err;  // standard error
};

struct Surroundings {
    std::string input = "";        // what standard input holds, at most what a pipe takes
    std::string output = "";       // where standard output goes instead of Outcome::out
    unsigned long file_limit = 0;  // the largest file in bytes; 0 for none
};

class Sandbox {
  public:
    Sandbox();

    const std::filesystem::path& directory() const { return directory_; }
    void Write(const std::string& name, const std::string& bytes) const;
    std::string Read(const std::string& name) const;
    // The names in the directory and in the one for temporary files, with a blank behind each.
    std::string Listing() const;

    Outcome Run(const std::vector<std::string>& arguments, const Surroundings& around = {});

    // The two halves of Run, for a process whose standard input stays open.
    pid_t Start(const std::vector<std::string>& arguments, const Surroundings& around = {});
    Outcome Finish(pid_t process);
    // What a started process has written to standard output so far.
    std::string OutputSoFar() const;

  private:
    std::filesystem::path directory_;  // the working directory
    std::filesystem::path temp_;       // TMPDIR
    std::filesystem::path streams_;    // what the process prints
    int input_ = -1;                   // the other end of its standard input
};

}  // namespace scan695::test
