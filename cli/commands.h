// The grammar: scan695 and its subcommands. The table in commands.cpp names them all: a new
// subcommand is one line there.
#pragma once

#include <string>
#include <vector>

namespace scan695::cli {

// Runs the command line, given without the name of the program; gives the exit status.
int RunCommandLine(std::vector<std::string> arguments);

}  // namespace scan695::cli
