// The grammar: scan695 and its subcommands. The table in commands.cpp names them all: a new
// subcommand is one line there.
#pragma once

#include <string>
#include <vector>

#include "cli/command.h"

namespace scan695::cli {

// Declares the grammar on `app`: each subcommand has its summary as description and its help text
// as footer, `app` what its own help says around the list of subcommands. Gives their actions, in
// the same order.
std::vector<Action> DeclareCommands(CLI::App& app);

// Runs the command line, given without the name of the program; gives the exit status.
int RunCommandLine(std::vector<std::string> arguments);

}  // namespace scan695::cli
