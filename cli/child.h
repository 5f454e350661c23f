// The half of a conversion that runs in a process of its own. The library ends its process on a
// fatal condition, prints on standard output and puts the FST file beside its input, so it gets a
// process, a pipe and a private folder; everything that the user sees is the parent's work.
#pragma once

#include <string>

namespace scan695::cli {

struct ChildTask {
    std::string folder;  // the working directory of the child
    std::string input;   // names in it, or absolute paths
    std::string stf;
    bool debug = false;
};

// Exit status of a child that could not begin: 1 is the library's own.
inline constexpr int CHILD_CANNOT_START = 125;

// Converts in this process, whose standard streams and working directory are set up already. Gives
// the exit status; a fatal stop ends the process in here.
int ConvertHere(const ChildTask& task);

}  // namespace scan695::cli
