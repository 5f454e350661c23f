#include "cli/verify_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "cli/complain.h"
#include "cli/database.h"
#include "inspector/verify.h"

namespace scan695::cli {

namespace {

constexpr char HELP[] = R"(scan695 verify - does the database keep its promises?

Usage:
  scan695 verify FILE.FST

Checks everything that the format promises. Prints one line for each violation
and nothing for a sound file. An object file as FILE is converted first; "-" is
standard input.

Exit status: 0 sound, 1 damaged or not readable, 2 wrong usage.
)";

int Run(const std::string& file) {
    const auto fst = OpenDatabase(file);
    if (!fst) return FAILED;
    const std::vector<std::string> violations = inspector::Verify(*fst);
    for (const std::string& line : violations) std::cout << file << ": " << line << '\n';
    return FlushOutput(violations.empty() ? DONE : FAILED);
}

Action Declare(CLI::App& app) {
    const auto file = std::make_shared<std::string>();
    app.add_option("FILE", *file)->required();
    return [file] { return Run(*file); };
}

}  // namespace

const Command VERIFY_COMMAND = {"verify", "FILE.FST",
                                "tells whether the database keeps its promises", HELP, Declare};

}  // namespace scan695::cli
