#include "manual/mdoc.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace scan695::manual {

namespace {

constexpr size_t LINE_WIDTH = 76;

bool IsUpper(char c) {
    return std::isupper(static_cast<unsigned char>(c)) != 0;
}

bool IsLetter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

// One word of a command line as a macro with its argument.
std::string MacroOf(std::string word) {
    std::string behind;
    if (word == "|") return word;
    if (word.ends_with(',')) {
        word.pop_back();
        behind = " ,";
    } else if (word.size() > 3 && word.ends_with("...")) {
        word.resize(word.size() - 3);
        behind = " ...";
    }
    if (word == "-") return "Fl" + behind;
    if (word[0] == '-') return "Fl " + word.substr(1) + behind;
    return (IsUpper(word[0]) ? "Ar " : "Cm ") + word + behind;
}

// A word of prose: characters that roff takes for its own are escaped, an argument stands out.
std::string EscapedWord(const std::string& word, const std::vector<std::string>& arguments) {
    const size_t at = word[0] == '"' ? 1 : 0;
    for (const std::string& name : arguments) {
        if (word.compare(at, name.size(), name) != 0) continue;
        std::string behind = word.substr(at + name.size());
        const bool is_plural = behind.starts_with("s");
        if (behind.size() > is_plural && IsLetter(behind[is_plural])) continue;
        return word.substr(0, at).append("\\fI").append(name).append("\\fP").append(behind);
    }
    std::string escaped;
    for (size_t i = 0; i < word.size(); ++i) {
        const bool is_dash = word[i] == '-' && (i == 0 || !IsLetter(word[i - 1]));
        if (word[i] == '\\')
            escaped += "\\e";
        else
            escaped += is_dash ? "\\-" : std::string(1, word[i]);
    }
    const bool is_request = escaped[0] == '.' || escaped[0] == '\'';
    return (is_request ? "\\&" : "") + escaped;
}

}  // namespace

std::string MacrosOf(const std::string& words) {
    std::istringstream input(words);
    std::string macros;
    for (std::string word; input >> word;) macros += (macros.empty() ? "" : " ") + MacroOf(word);
    return macros;
}

// "scan695 find FILE QUERY... [--json]"
void WriteUsage(const std::string& usage, const std::string& name, std::ostream& out) {
    const std::string command = "scan695 " + name;
    const bool is_named = usage.starts_with(command + ' ');
    out << ".Nm " << (is_named ? command : "scan695") << '\n';
    for (size_t at = is_named ? command.size() : sizeof "scan695" - 1; at < usage.size();) {
        const bool is_optional = usage[at] == '[';
        const size_t end = std::min(usage.find(is_optional ? ']' : '[', at), usage.size());
        const size_t begin = is_optional ? at + 1 : at;
        const std::string macros = MacrosOf(usage.substr(begin, end - begin));
        if (!macros.empty()) out << (is_optional ? ".Op " : ".") << macros << '\n';
        at = is_optional ? end + 1 : end;
    }
}

// The names that the usage has for arguments, longest first.
std::vector<std::string> ArgumentNames(const std::vector<std::string>& usages) {
    std::vector<std::string> names = {"FILE"};
    for (const std::string& usage : usages) {
        for (size_t begin = 0; begin < usage.size();) {
            const size_t end = std::min(usage.find_first_of(" []", begin), usage.size());
            std::string word = usage.substr(begin, end - begin);
            if (word.ends_with("...")) word.resize(word.size() - 3);
            if (!word.empty() && IsUpper(word[0])) names.push_back(word);
            begin = end + 1;
        }
    }
    std::sort(names.begin(), names.end(),
              [](const auto& a, const auto& b) { return a.size() > b.size(); });
    return names;
}

// Prose. mdoc wants each sentence on a line of its own.
void WriteText(const std::string& text, const std::vector<std::string>& arguments,
               std::ostream& out) {
    std::istringstream words(text);
    size_t column = 0;
    bool ends_sentence = false;
    for (std::string word; words >> word;) {
        const std::string escaped = EscapedWord(word, arguments);
        const bool breaks = ends_sentence || column + escaped.size() >= LINE_WIDTH;
        if (breaks) column = 0;
        out << (breaks ? "\n" : column > 0 ? " " : "") << escaped;
        column += escaped.size() + 1;
        ends_sentence = word.ends_with('.') || word.ends_with('?');
    }
    out << '\n';
}

}  // namespace scan695::manual
