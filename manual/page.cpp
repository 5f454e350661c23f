#include "manual/page.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "manual/arguments.h"
#include "manual/help_text.h"
#include "manual/mdoc.h"

namespace scan695::manual {

namespace {

using Kind = HelpPart::Kind;

constexpr std::string_view STATUS = "Exit status: ";

void WritePart(const HelpPart& part, const std::vector<std::string>& arguments, std::ostream& out) {
    if (part.kind == Kind::TERM) {
        out << ".It " << (part.term[0] == '-' ? MacrosOf(part.term) : part.term) << '\n';
    }
    if (part.kind == Kind::EXAMPLE) out << ".Dl ";
    WriteText(part.text, arguments, out);
}

// The description, and the exit status in a section of its own.
void WriteParts(const HelpText& help, std::ostream& out) {
    const std::vector<std::string> arguments = ArgumentNames(help.usage);
    bool is_list = false;
    bool follows = false;
    for (HelpPart part : help.parts) {
        if (is_list != (part.kind == Kind::TERM)) {
            is_list = !is_list;
            out << (is_list ? ".Bl -tag -width Ds\n" : ".El\n");
        }
        if (part.text.starts_with(STATUS)) {
            out << ".Sh EXIT STATUS\n";
            part.text.erase(0, STATUS.size());
        } else if (part.kind == Kind::PARAGRAPH && follows) {
            out << ".Pp\n";
        }
        WritePart(part, arguments, out);
        follows = true;
    }
    if (is_list) out << ".El\n";
}

// --help and --version, which the help texts leave out, behind their last option.
void AddOptions(const CLI::App& app, HelpText& help) {
    std::vector<HelpPart> more;
    for (const CLI::Option* option : OptionsOf(app)) {
        std::string term;
        for (const std::string& name : NamesOf(*option)) term += (term.empty() ? "" : ", ") + name;
        if (FindOption(help, NamesOf(*option).back()) != nullptr) continue;
        if (option->get_description().empty()) {
            throw std::runtime_error("the help of " + app.get_name() + " leaves out " + term);
        }
        more.push_back({Kind::TERM, term, option->get_description() + '.'});
    }
    const auto last = std::find_if(help.parts.rbegin(), help.parts.rend(), [](const auto& part) {
        return part.kind == Kind::TERM && part.term[0] == '-';
    });
    const auto status = std::find_if(help.parts.begin(), help.parts.end(), [](const auto& part) {
        return part.text.starts_with(STATUS);
    });
    help.parts.insert(last == help.parts.rend() ? status : last.base(), more.begin(), more.end());
}

}  // namespace

std::string PageOf(const CLI::App& app) {
    const std::vector<const CLI::App*> subcommands = app.get_subcommands({});
    const bool is_main = !subcommands.empty();
    HelpText help = ParseHelp(app.get_footer());
    AddOptions(app, help);
    std::ostringstream out;
    out << ".Sh NAME\n.Nm scan695" << (is_main ? "" : "-" + app.get_name()) << "\n.Nd "
        << (is_main ? help.title : app.get_description()) << "\n.Sh SYNOPSIS\n";
    for (const std::string& usage : help.usage) WriteUsage(usage, app.get_name(), out);
    for (const CLI::App* subcommand : subcommands) {
        for (const std::string& usage : ParseHelp(subcommand->get_footer()).usage) {
            WriteUsage(usage, subcommand->get_name(), out);
        }
    }
    out << ".Sh DESCRIPTION\n";
    if (is_main) {
        out << "The subcommands have pages of their own:\n.Bl -tag -width scan695-convert(1)\n";
        for (const CLI::App* subcommand : subcommands) {
            out << ".It Xr scan695-" << subcommand->get_name() << " 1\n";
            WriteText(subcommand->get_description(), {"FILE"}, out);
        }
        out << ".El\n.Pp\n";
    }
    WriteParts(help, out);
    return std::move(out).str();
}

}  // namespace scan695::manual
