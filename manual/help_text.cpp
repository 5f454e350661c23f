#include "manual/help_text.h"

#include <algorithm>
#include <sstream>

namespace scan695::manual {

namespace {

constexpr size_t INDENT = 2;

void Append(std::string& text, const std::string& more) {
    text += (text.empty() ? "" : " ") + more;
}

// A line that is indented farther goes on with the one before.
void TakeUsage(const std::string& line, std::vector<std::string>& usage) {
    const size_t indent = line.find_first_not_of(' ');
    if (indent == INDENT) usage.emplace_back();
    Append(usage.back(), line.substr(indent));
}

void TakeIndented(const std::string& line, std::vector<HelpPart>& parts) {
    const size_t indent = line.find_first_not_of(' ');
    if (indent > INDENT) {
        Append(parts.back().text, line.substr(indent));
        return;
    }
    const size_t gap = line.find("  ", indent);
    if (gap == std::string::npos) {
        parts.push_back({HelpPart::Kind::EXAMPLE, "", line.substr(indent)});
        return;
    }
    parts.push_back({HelpPart::Kind::TERM, line.substr(indent, gap - indent),
                     line.substr(line.find_first_not_of(' ', gap))});
}

}  // namespace

HelpText ParseHelp(std::string_view help) {
    HelpText result;
    std::istringstream lines{std::string(help)};
    std::string line;
    std::getline(lines, line);
    result.title = line.substr(line.find(" - ") + 3);
    bool is_usage = false;
    bool joins = false;  // the line before belongs to the same paragraph
    while (std::getline(lines, line)) {
        if (line == "Usage:") {
            is_usage = true;
        } else if (line.empty()) {
            is_usage = joins = false;
        } else if (is_usage) {
            TakeUsage(line, result.usage);
        } else if (line[0] == ' ') {
            TakeIndented(line, result.parts);
            joins = false;
        } else {
            if (!joins) result.parts.push_back({HelpPart::Kind::PARAGRAPH, "", ""});
            Append(result.parts.back().text, line);
            joins = true;
        }
    }
    return result;
}

const HelpPart* FindOption(const HelpText& help, const std::string& name) {
    const auto found = std::find_if(help.parts.begin(), help.parts.end(), [&](const auto& part) {
        std::istringstream words(part.term);
        std::string word;
        while (words >> word) {
            if (word == name || word == name + ',') return true;
        }
        return false;
    });
    return found == help.parts.end() ? nullptr : &*found;
}

}  // namespace scan695::manual
