#include "cli/complain.h"

#include <cerrno>
#include <cstdio>
#include <iostream>

#include "cli/commands.h"
#include "cli/host.h"

namespace scan695::cli {

void Complain(const std::string& what) {
    std::fflush(stdout);
    std::fprintf(stderr, "scan695: %s\n", what.c_str());
}

void Complain(const std::string& file, const std::string& what) {
    Complain(file + ": " + what);
}

int FlushOutput(int status) {
    std::cout.flush();
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0 && std::cout) return status;
    Complain("standard output", ErrorText(errno));
    return status == DONE ? FAILED : status;
}

}  // namespace scan695::cli
