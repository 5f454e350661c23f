#include "cli/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>
#include <vector>

#include "cli/check_command.h"
#include "cli/command.h"
#include "cli/complain.h"
#include "cli/convert_command.h"
#include "cli/diff_command.h"
#include "cli/elf_command.h"
#include "cli/find_command.h"
#include "cli/report_command.h"
#include "cli/show_command.h"
#include "cli/size_command.h"
#include "cli/type_command.h"
#include "cli/verify_command.h"

namespace scan695::cli {

namespace {

// In the order of the help.
constexpr const Command* COMMANDS[] = {
    &CONVERT_COMMAND,  // the default
    &CHECK_COMMAND,   &SHOW_COMMAND,   &FIND_COMMAND, &TYPE_COMMAND,   &SIZE_COMMAND,
    &DIFF_COMMAND,    &VERIFY_COMMAND, &ELF_COMMAND,  &REPORT_COMMAND,
};

#define SCAN695_TEXT_OF(x) #x
#define SCAN695_TEXT(x) SCAN695_TEXT_OF(x)
constexpr char VERSION_TEXT[] = "scan695 " SCAN695_TEXT(SCAN695_VERSION) "\n";

constexpr char HELP_HEAD[] =
    R"(scan695 - converts and reads object files of the TASKING tool chain

)";
constexpr char HELP_TAIL[] = R"(
FILE is an absolute (linked) object file in the IEEE-695 dialect of the TASKING
tool chain for the C166 family or for TriCore; "-" is standard input. A FILE that
is called like a subcommand is reached as ./check, say.
"scan695 SUBCOMMAND --help" tells the options of each ("convert" those of the
first line), "scan695 --version" the version.

Exit status: 0 success, 1 failure, 2 wrong usage. Every error is one line on
standard error, "scan695: FILE: cause".
)";

std::string MainHelp() {
    std::string text = HELP_HEAD;
    for (const Command* command : COMMANDS) {
        const bool is_default = command == &CONVERT_COMMAND;
        text += std::string("  scan695 ") + (is_default ? "" : command->name) +
                (is_default ? "" : " ") + command->arguments + "\n      " + command->summary + '\n';
    }
    return text + HELP_TAIL;
}

bool IsCommandName(const std::string& word) {
    return std::any_of(std::begin(COMMANDS), std::end(COMMANDS),
                       [&](const Command* command) { return word == command->name; });
}

// The default subcommand is written out, and the arguments come in the order that CLI11 takes them,
// the last one first.
std::vector<std::string> ForParser(std::vector<std::string> arguments) {
    const std::string first = arguments.empty() ? "" : arguments[0];
    const bool is_for_all = first == "-h" || first == "--help" || first == "--version";
    if (!is_for_all && !IsCommandName(first)) {
        arguments.insert(arguments.begin(), CONVERT_COMMAND.name);
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

int Print(const std::string& text) {
    std::fputs(text.c_str(), stdout);
    return FlushOutput(DONE);
}

int RefuseUsage(const std::string& what, const std::string& subcommand) {
    Complain(what + " (see \"scan695 " + subcommand + (subcommand.empty() ? "" : " ") +
             "--help\")");
    return WRONG_USAGE;
}

// A word that nobody knows tells more than what is missing because of it.
std::string Cause(const CLI::App& app, const CLI::ParseError& error) {
    const std::vector<std::string> unknown = app.remaining(true);
    return unknown.empty() ? error.what() : CLI::ExtrasError(unknown).what();
}

}  // namespace

std::vector<Action> DeclareCommands(CLI::App& app) {
    app.name("scan695");
    app.footer(std::string(HELP_HEAD) + HELP_TAIL);
    app.set_help_flag("-h,--help", "Print the help text");
    app.set_version_flag("--version", VERSION_TEXT, "Print the version");
    app.require_subcommand(1);
    app.allow_windows_style_options(false);
    std::vector<Action> actions;
    for (const Command* command : COMMANDS) {
        CLI::App* subcommand = app.add_subcommand(command->name, command->summary);
        subcommand->footer(command->help);
        actions.push_back(command->declare(*subcommand));
    }
    return actions;
}

int RunCommandLine(std::vector<std::string> arguments) {
    CLI::App app;
    const std::vector<Action> actions = DeclareCommands(app);

    const Command* chosen = nullptr;
    const auto choose = [&] {
        for (const Command* command : COMMANDS) {
            if (app.got_subcommand(command->name)) chosen = command;
        }
        return chosen == nullptr ? "" : chosen->name;
    };
    try {
        app.parse(ForParser(std::move(arguments)));
        choose();
        const auto* const place = std::find(std::begin(COMMANDS), std::end(COMMANDS), chosen);
        return actions[static_cast<size_t>(place - std::begin(COMMANDS))]();
    } catch (const CLI::CallForHelp&) {
        choose();
        return Print(chosen == nullptr ? MainHelp() : chosen->help);
    } catch (const CLI::CallForVersion&) {
        return Print(VERSION_TEXT);
    } catch (const CLI::ParseError& error) {
        return RefuseUsage(Cause(app, error), choose());
    } catch (const UsageError& error) {
        return RefuseUsage(error.what, choose());
    }
}

}  // namespace scan695::cli
