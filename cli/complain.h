// What the command says to its user besides results: errors on standard error, one line each, and
// what is under way on a terminal.
#pragma once

#include <string>

namespace scan695::cli {

// "scan695: what".
void Complain(const std::string& what);

// "scan695: FILE: what".
void Complain(const std::string& file, const std::string& what);

// To be called with the exit status when everything is printed: output that is lost must not count
// as a success. Gives the status to end with.
int FlushOutput(int status);

// A line on the terminal that tells what is under way; each takes the place of the one before, and
// other lines that of the last one.
bool CanShowStatus();
void ShowStatus(const std::string& text);
void EraseStatus();

}  // namespace scan695::cli
