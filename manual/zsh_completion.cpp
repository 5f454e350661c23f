#include "manual/zsh_completion.h"

#include <CLI/CLI.hpp>
#include <sstream>

#include "manual/arguments.h"
#include "manual/help_text.h"

namespace scan695::manual {

namespace {

// What is told of an option: the first sentence about it in the help text.
std::string DescriptionOf(const CLI::Option& option, const HelpText& help) {
    const HelpPart* part = FindOption(help, NamesOf(option).back());
    if (part == nullptr) return option.get_description();
    std::string text = part->text.substr(0, part->text.find(". "));
    if (text.ends_with('.')) text.pop_back();
    return text;
}

// For single quotes, with the characters of `special` behind a backslash.
std::string Quoted(const std::string& text, const std::string& special) {
    std::string quoted;
    for (const char c : text) {
        if (special.find(c) != std::string::npos) quoted += '\\';
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return quoted;
}

// The words that _arguments takes, one for each name of the option.
void WriteOption(const CLI::Option& option, const HelpText& help, std::ostream& out) {
    const std::vector<std::string> names = NamesOf(option);
    std::string all;
    for (const std::string& name : names) all += (all.empty() ? "" : " ") + name;
    const bool is_last = names.back() == "--help" || names.back() == "--version";
    for (const std::string& name : names) {
        out << " \\\n            '(" << (is_last ? "- *" : all) << ')' << name;
        if (TakesValue(option)) out << (name.starts_with("--") ? "=" : "+");
        out << '[' << Quoted(DescriptionOf(option, help), "[]\\") << ']';
        if (TakesValue(option)) out << (IsFile(option) ? ":file:_files" : ":value: ");
        out << '\'';
    }
}

void WriteArguments(const CLI::App& app, std::ostream& out) {
    const HelpText help = ParseHelp(app.get_footer());
    for (const CLI::Option* option : OptionsOf(app)) WriteOption(*option, help, out);
    for (const CLI::Option* option : PositionalsOf(app)) {
        out << " \\\n            '" << (IsRepeated(*option) ? "*:" : ":") << option->get_name(true)
            << (IsFile(*option) ? ":_files'" : ": '");
    }
    out << '\n';
}

}  // namespace

std::string ZshCompletion(const CLI::App& app, const std::string& fallback) {
    std::ostringstream out;
    std::ostringstream cases;
    out << "#compdef scan695\n# Made from the command's own grammar.\n_scan695()\n{\n"
        << "    local -a subcommands\n    subcommands=(\n";
    for (const CLI::App* subcommand : app.get_subcommands({})) {
        out << "        '" << subcommand->get_name() << ':'
            << Quoted(subcommand->get_description(), ":\\") << "'\n";
        cases << "    " << subcommand->get_name()
              << ")\n        shift words\n        ((CURRENT--))\n        _arguments -s";
        WriteArguments(*subcommand, cases);
        cases << "        ;;\n";
    }
    out << "    )\n    if ((CURRENT == 2)) && [[ $words[2] != -* ]]; then\n"
        << "        _describe -t subcommands subcommand subcommands\n        _files\n"
        << "        return\n    fi\n    local -a first\n    ((CURRENT == 2)) && first=(";
    for (const CLI::Option* option : OptionsOf(app)) {
        if (NamesOf(*option).back() != "--help") WriteOption(*option, {}, out);
    }
    out << ")\n    case $words[2] in\n" << cases.str() << "    *)\n        _arguments -s $first";
    WriteArguments(*app.get_subcommand(fallback), out);
    out << "        ;;\n    esac\n}\n_scan695 \"$@\"\n";
    return std::move(out).str();
}

}  // namespace scan695::manual
