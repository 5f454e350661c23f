// The commands over the library: one conversion, and the question which files are for it.
#pragma once

#include <string>
#include <vector>

namespace scan695::cli {

// Exit statuses.
inline constexpr int DONE = 0;
inline constexpr int FAILED = 1;
inline constexpr int WRONG_USAGE = 2;

struct ConvertOptions {
    std::string file;  // "-" is standard input
    std::string out;   // "-" is standard output
    bool debug = false;
    bool quiet = false;   // drop the library's console lines
    bool prompt = false;  // let the library wait for ENTER after a fatal stop
};

// Converts one file. A fatal stop of the library ends the process in here, with status FAILED and
// nothing left behind; everything else comes back as an exit status.
int RunConversion(const ConvertOptions& options);

// Prints for each file whether it is for this scanner. DONE when all are.
int RunCheck(const std::vector<std::string>& files);

// One line on standard error: "scan695: FILE: what".
void Complain(const std::string& file, const std::string& what);

}  // namespace scan695::cli
