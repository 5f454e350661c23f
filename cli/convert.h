// The commands over the library: one conversion, and the question which files are for it.
#pragma once

#include <string>
#include <vector>

namespace scan695::cli {

struct ConvertOptions {
    std::string file;  // "-" is standard input
    std::string out;   // "-" is standard output
    bool debug = false;
    bool quiet = false;  // drop the library's console lines
};

// Converts one file. A fatal stop of the library ends the process in here, with status FAILED and
// nothing left behind; everything else comes back as an exit status.
int RunConversion(const ConvertOptions& options);

// Prints for each file whether it is for this scanner. DONE when all are.
int RunCheck(const std::vector<std::string>& files);

}  // namespace scan695::cli
