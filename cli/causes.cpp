#include "cli/causes.h"

#include <algorithm>

namespace scan695::cli {

namespace {

// Told by how the message begins and ends; the name of the file may stand between.
constexpr struct {
    const char* begin;
    const char* end;
    const char* cause;
} CAUSES[] = {
    {"File ", " not in TASKING IEEE-695 format", "not an object file"},
    {"File ", " is non-absolute TASKING IEEE-695 format", "not an absolute (linked) object file"},
    {"File ", " was not linked successfully", "was not linked successfully"},
    {"Unknown processor, ", "", "unknown processor"},
    {"Error: cannot open object", "", "cannot be opened"},
    {"Error: cannot read temporary buffer", "", "damaged: a reference leads nowhere"},
    {"Error: not enough memory", "", "not enough memory"},
};

std::string LowerFirst(std::string text) {
    if (text.size() > 1 && text[0] >= 'A' && text[0] <= 'Z' && text[1] >= 'a') {
        text[0] = static_cast<char>(text[0] - 'A' + 'a');
    }
    return text;
}

// "Unexpected record at 1C" and its like.
std::string DamageOf(const std::string& message) {
    const size_t at = message.rfind(" at ");
    if (at == std::string::npos || at + 4 == message.size()) return {};
    std::string offset = message.substr(at + 4);
    if (offset.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) return {};
    for (char& c : offset) {
        if (c >= 'A' && c <= 'F') c = static_cast<char>(c - 'A' + 'a');
    }
    return "damaged at offset 0x" + offset + ": " + LowerFirst(message.substr(0, at));
}

}  // namespace

std::string CauseOf(const std::string& message) {
    for (const auto& c : CAUSES) {
        if (message.starts_with(c.begin) && message.ends_with(c.end)) return c.cause;
    }
    const bool is_name = message.starts_with("Unknown ");  // what follows is the file's own text
    const std::string damage = is_name ? std::string() : DamageOf(message);
    return damage.empty() ? LowerFirst(message) : damage;
}

bool IsOutputMessage(const std::string& message) {
    return message.starts_with("Error: cannot open output file") ||
           message.starts_with("Error: cannot write to output file");
}

}  // namespace scan695::cli
