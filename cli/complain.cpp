#include "cli/complain.h"

#include <cerrno>
#include <cstdio>
#include <iostream>

#include "cli/command.h"
#include "cli/host.h"

namespace scan695::cli {

namespace {

std::string status_line;  // what stands on the terminal

// Names and messages may hold anything; a line stays a line.
std::string Printable(std::string text) {
    for (char& c : text) {
        if ((c >= 0 && c < ' ') || c == '\x7F') c = '?';
    }
    return text;
}

}  // namespace

void Complain(const std::string& what) {
    EraseStatus();
    std::fprintf(stderr, "scan695: %s\n", Printable(what).c_str());
}

void Complain(const std::string& file, const std::string& what) {
    Complain(file + ": " + what);
}

int FlushOutput(int status) {
    errno = 0;
    std::cout.flush();
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0 && std::cout) return status;
    Complain("cannot write standard output: " + ErrorText(errno == 0 ? EIO : errno));
    return status == DONE ? FAILED : status;
}

bool CanShowStatus() {
    return IsTerminal(STANDARD_ERROR);
}

void ShowStatus(const std::string& text) {
    if (text == status_line) return;
    EraseStatus();
    status_line = Printable(text);
    std::fputs(status_line.c_str(), stderr);
    std::fflush(stderr);
}

void EraseStatus() {
    if (status_line.empty()) return;
    std::fprintf(stderr, "\r%*s\r", static_cast<int>(status_line.size()), "");
    status_line.clear();
}

}  // namespace scan695::cli
