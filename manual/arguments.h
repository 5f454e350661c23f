// What the grammar of a subcommand says about its options and arguments.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace scan695::manual {

// The declared options, or the positional arguments, in their order.
std::vector<const CLI::Option*> OptionsOf(const CLI::App& app);
std::vector<const CLI::Option*> PositionalsOf(const CLI::App& app);

// "-o", "--output".
std::vector<std::string> NamesOf(const CLI::Option& option);

bool TakesValue(const CLI::Option& option);
bool IsRepeated(const CLI::Option& positional);

// Whether the value of an option, or a positional argument, is the name of a file.
bool IsFile(const CLI::Option& option);

}  // namespace scan695::manual
