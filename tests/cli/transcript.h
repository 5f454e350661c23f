// Command lines and what comes of them as a text that a person can read:
//
//     # A comment.
//     < echo older >bad.stf            prepares the files of the next command; any number of lines
//     $ scan695 bad.abs                the command line, for bash
//     1> a line of standard output     what it printed
//     2> a line of standard error
//     status 1                         if it is not 0
//     + a.stf  STF                     a file that has come
//     ~ old.stf  "text"                one that has changed
//     - b.abs                          one that has gone
//
// Each command has a folder of its own with the inputs of Sandbox and an empty TMPDIR.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <string>

namespace scan695::test {

// Inputs: a.abs converts, odd.abs as well, though Check does not know it, warn.abs with all
// warnings, big.abs (as odd.abs) in no less than some milliseconds; cut.abs is damaged, bad.abs no
// object file.
class Sandbox {
  public:
    Sandbox();

    const std::filesystem::path& folder() const { return folder_; }
    // Starts a process with its standard streams in files.
    pid_t Start(const std::string& command) const;
    int Wait(pid_t process) const;  // its status; 128 + n for a signal
    std::string Output() const;
    std::string Errors() const;
    // What lies in the folder and, under TMPDIR/, in the one for temporary files, by name.
    std::map<std::string, std::string> Files() const;

  private:
    std::filesystem::path folder_;   // the working directory
    std::filesystem::path temp_;     // TMPDIR
    std::filesystem::path streams_;  // what the process prints
};

// Plays the commands of a transcript again and gives it with what came of them now.
std::string Replay(const std::string& transcript);

}  // namespace scan695::test
