#include "tests/scopes/scope_case.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace scan695::test {

constexpr int NOF_ATTRIBS = 4;  // at the head of every STF file

Converted ConvertScopes(const ScopeCase& scopes, bool debug_mode) {
    // Behind either part stands a byte that no record begins with.
    const Bytes end = {0x00, 0x00};
    const Bytes debug = scopes.debug.empty() ? Bytes{} : scopes.debug + end;
    const Bytes external = scopes.external.empty() ? Bytes{} : scopes.external + end;
    static const std::filesystem::path directory = ScratchDirectory();
    WriteWholeFile(directory / "t.abs", Build({.processor = scopes.processor,
                                               .segments = scopes.segments,
                                               .external = external,
                                               .debug = debug,
                                               .data = scopes.data}));
    return ConvertInProcess(directory / "t.abs", directory / "t.stf", debug_mode);
}

std::string Records(const Converted& result) {
    std::string text = UnixLines(result.stf);
    for (int i = 0; i < NOF_ATTRIBS; ++i) text.erase(0, text.find("}\n") + 2);
    std::replace(text.begin(), text.end(), '\n', ' ');
    std::replace(text.begin(), text.end(), '"', '\'');
    return text;
}

std::string Outcome(const ScopeCase& scopes) {
    const Converted result = ConvertScopes(scopes);
    if (result.status == 0) return Records(result);
    std::string message = result.console.substr(0, result.console.find('\a'));
    message.erase(0, message.rfind('\n', message.size() - 2) + 1);
    return message;
}

std::string LinesThatBegin(const std::string& console, const std::vector<std::string>& beginnings) {
    std::istringstream lines(console);
    std::string kept;
    for (std::string line; std::getline(lines, line);)
        if (std::any_of(beginnings.begin(), beginnings.end(),
                        [&](const std::string& beginning) { return line.starts_with(beginning); }))
            kept += line + '\n';
    return kept;
}

Bytes CModule(const Bytes& scope, const Bytes& types) {
    return Bb1("m.c", types) + Bb3("m.c", scope);
}

Bytes AsmModule(const Bytes& body) {
    return Bb10("m", body);
}

}  // namespace scan695::test
