#include "cli/check_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "cli/complain.h"
#include "cli/convert.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 check - are these files for this scanner?

Usage:
  scan695 check FILE...

Prints for each FILE whether hosts take it for this scanner. "-" is standard
input.

Exit status: 0 every FILE is, 1 some FILE is not, 2 wrong usage.
)";

Action Declare(CLI::App& app) {
    const auto files = std::make_shared<std::vector<std::string>>();
    app.add_option("FILE", *files)->required();
    return [files] { return FlushOutput(RunCheck(*files)); };
}

}  // namespace

const Command CHECK_COMMAND = {"check", "FILE...", "tells whether hosts take FILE for this scanner",
                               HELP, Declare};

}  // namespace scan695::cli
