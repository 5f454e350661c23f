#include "ask/names.h"

#include <algorithm>
#include <cstdint>

#include "base/text_case.h"

namespace scan695::ask {

int CompareNames(std::string_view a, std::string_view b) {
    const size_t shorter = std::min(a.size(), b.size());
    for (size_t i = 0; i < shorter; ++i) {
        const int difference = LowerByte(a[i]) - LowerByte(b[i]);
        if (difference != 0) return difference;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

bool MatchesPattern(std::string_view name, std::string_view pattern) {
    // The last star is the only one that a mismatch has to return to.
    size_t at = 0, in_pattern = 0;
    size_t star = std::string_view::npos, behind_star = 0;
    while (at < name.size()) {
        if (in_pattern < pattern.size() && pattern[in_pattern] == '*') {
            star = in_pattern++;
            behind_star = at;
        } else if (in_pattern < pattern.size() &&
                   LowerByte(pattern[in_pattern]) == LowerByte(name[at])) {
            ++in_pattern;
            ++at;
        } else if (star != std::string_view::npos) {
            in_pattern = star + 1;
            at = ++behind_star;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in_pattern) == std::string_view::npos;
}

Match MatchOf(std::string_view name, std::string_view wanted) {
    if (name == wanted) return Match::EXACT;
    if (CompareNames(name, wanted) == 0) return Match::ANY_CASE;
    return MatchesPattern(name, wanted) ? Match::PATTERN : Match::NONE;
}

const char* MatchWord(Match match) {
    constexpr const char* WORDS[] = {"exact", "any case", "pattern", "none"};
    return WORDS[static_cast<size_t>(match)];
}

uint32_t NameKey(std::string_view name) {
    uint32_t key = 0x811C9DC5;  // FNV-1a
    for (const char c : name) key = (key ^ LowerByte(c)) * 0x01000193;
    return key;
}

}  // namespace scan695::ask
