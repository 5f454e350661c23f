// The samples, and how a run must end that does not succeed.
#pragma once

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/test.h"

namespace scan695::test {

inline constexpr const char* SAMPLES[] = {"c166.abs", "296sa.abs", "tricore.abs"};
inline const std::string PROMPT = "\a\nPress ENTER to terminate\n";
inline const std::string NO_MEMORY = "Error: not enough memory\n";

inline std::vector<uint8_t> SampleBytes(const char* name) {
    const std::string text =
        ReadWholeFile(std::filesystem::path(SCAN695_SOURCE_DIR) / "samples" / name);
    return {text.begin(), text.end()};
}

// A fatal stop with this message, which leaves no FST file.
inline bool StoppedWith(const Converted& result, const std::string& message) {
    return result.status == 1 && result.console.ends_with(message + PROMPT) && result.fst.empty();
}

// DebugMode adds comments to the STF text, and nothing else.
inline std::string WithoutComments(const std::string& stf) {
    std::istringstream lines(stf);
    std::string text;
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("//")) text += line + '\n';
    return text;
}

inline bool SameResults(const Converted& a, const Converted& b) {
    return a.status == b.status && a.stf == b.stf && a.fst == b.fst && a.console == b.console;
}

}  // namespace scan695::test
