// Completion of command lines in zsh: a script made from the grammar.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace scan695::manual {

// `app` is scan695 with its subcommands; `fallback` names the one that a command line without a
// subcommand means.
std::string ZshCompletion(const CLI::App& app, const std::string& fallback);

}  // namespace scan695::manual
