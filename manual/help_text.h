// The help text of a subcommand taken apart, for what else is made of it: manual pages and
// descriptions in completions. Lines that begin in the first column are paragraphs; behind two
// spaces stands a term, and behind two more what it means, or an example alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace scan695::manual {

struct HelpPart {
    enum class Kind { PARAGRAPH, TERM, EXAMPLE };
    Kind kind;
    std::string term;  // of a TERM
    std::string text;  // lines joined by spaces
};

struct HelpText {
    std::string title;               // behind "scan695 NAME - "
    std::vector<std::string> usage;  // whole command lines
    std::vector<HelpPart> parts;
};

HelpText ParseHelp(std::string_view help);

// The part that is about the option `name`, or null.
const HelpPart* FindOption(const HelpText& help, const std::string& name);

}  // namespace scan695::manual
