#include "cli/console.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace scan695::cli {

namespace {

// Behind the message of a fatal stop; nothing follows.
constexpr std::string_view REPORT_END = "\a\nPress ENTER to terminate\n";
constexpr size_t TAIL_BYTES = 1024;  // messages have at most 255

// Lines of every run that tell of something odd. In a trace they may stand behind a line that was
// not ended.
struct Warning {
    std::string_view begin;
    std::string_view end;
    size_t skipped;  // what is not part of the text
};
constexpr Warning WARNINGS[] = {
    {"WARNING: Debug record for type ", " corrupted. Type ignored.", 9},
    {"**** UNRECOGNIZED tk_ti=", ", converted to UNDEFINED/UINT", 5},
    {"Source file \"", "\" does not belong to any module", 0},
    {"Warning: no code/data detected", "", 9},
};

void PickWarning(Console& console, std::string_view line) {
    for (const Warning& warning : WARNINGS) {
        if (!line.ends_with(warning.end)) continue;
        const size_t begin = line.rfind(warning.begin);
        if (begin == std::string_view::npos) continue;
        std::string text(line.substr(begin + warning.skipped));
        if (console.seen.insert(text).second) console.warnings.push_back(std::move(text));
        return;
    }
}

// The names hold a random part, so nothing else is mistaken for one.
std::string WithShownNames(const Console& console, std::string_view text) {
    std::string result(text);
    for (const Console::Name& name : console.names) {
        for (size_t at = 0; (at = result.find(name.printed, at)) != std::string::npos;
             at += name.shown.size()) {
            result.replace(at, name.printed.size(), name.shown);
        }
    }
    return result;
}

void PassOn(Console& console, std::string_view text, std::string& trace) {
    trace += WithShownNames(console, text);
    console.tail += text.substr(text.size() - std::min(text.size(), TAIL_BYTES));
    if (console.tail.size() > 2 * TAIL_BYTES)
        console.tail.erase(0, console.tail.size() - TAIL_BYTES);
}

}  // namespace

void ReadConsole(Console& console, const char* bytes, size_t size, std::string& trace) {
    console.pending.append(bytes, size);
    size_t begin = 0;
    for (size_t end; (end = console.pending.find('\n', begin)) != std::string::npos;
         begin = end + 1) {
        PickWarning(console, std::string_view(console.pending).substr(begin, end - begin));
    }
    // Whole lines are passed on, but what may turn out to be the end of a report.
    size_t passed = begin;
    const std::string_view lines = std::string_view(console.pending).substr(0, begin);
    for (size_t size = REPORT_END.size(); size > 0; --size) {
        if (!lines.ends_with(REPORT_END.substr(0, size))) continue;
        passed = begin - size;
        break;
    }
    PassOn(console, lines.substr(0, passed), trace);
    console.pending.erase(0, passed);
}

void EndConsole(Console& console, std::string& trace) {
    const bool is_stop = console.pending.ends_with(REPORT_END);
    if (is_stop) console.pending.resize(console.pending.size() - REPORT_END.size());
    PassOn(console, console.pending, trace);
    console.pending.clear();
    if (!is_stop) console.tail.clear();
}

std::string FatalMessage(const Console& console) {
    static constexpr std::string_view BEGINNINGS[] = {
        "Error: ",  "File ",          "Unexpected ", "Unknown ",  "Unrecognized ",
        "Invalid ", "Numbers long",   "Nesting ",    "Cannot ",   "Not ASN ",
        "CvtTk",    "ASN:Unexpected", "outName ",    "outField ", "--- Aborted",
    };
    std::string_view text = console.tail;
    while (text.ends_with('\n')) text.remove_suffix(1);
    text.remove_prefix(text.find_last_of("\n\b") + 1);  // npos + 1 is 0
    // The message may follow a trace line that was not ended.
    size_t begin = std::string_view::npos;
    for (const std::string_view beginning : BEGINNINGS) {
        const size_t at = text.find(beginning);
        if (at != std::string_view::npos && (begin == std::string_view::npos || at < begin)) {
            begin = at;
        }
    }
    return std::string(begin == std::string_view::npos ? text : text.substr(begin));
}

}  // namespace scan695::cli
