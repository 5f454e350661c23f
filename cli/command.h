// What a subcommand is. Each has files of its own, NAME_command.{h,cpp}, with its help text and one
// function that declares its options on a CLI::App and gives back what to do once they are parsed.
#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace scan695::cli {

// Exit statuses.
inline constexpr int DONE = 0;
inline constexpr int FAILED = 1;
inline constexpr int WRONG_USAGE = 2;

// Does what the command line asks for and gives the exit status.
using Action = std::function<int()>;

struct Command {
    const char* name;
    const char* arguments;  // as the help of scan695 shows them behind the name
    const char* summary;    // and what it says about the subcommand
    const char* help;       // the whole answer to "scan695 NAME --help"
    // Called once, before the arguments are parsed. The action owns the parsed options.
    Action (*declare)(CLI::App& app);
};

// Thrown by an action for arguments that cannot be meant: status 2. `what` names the option.
struct UsageError {
    std::string what;
};

}  // namespace scan695::cli
