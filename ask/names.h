// Names as people ask for them.
#pragma once

#include <string>
#include <string_view>

namespace scan695::ask {

// Below 0, 0, above 0, as the name indexes are sorted: letters A to Z as small ones, bytes
// unsigned.
int CompareNames(std::string_view a, std::string_view b);

// In a pattern "*" stands for any characters; letters match without regard to case.
bool MatchesPattern(std::string_view name, std::string_view pattern);

// How well a name answers a question: a name is asked for as it is written, then without regard to
// case, then as a pattern.
enum class Match { EXACT, ANY_CASE, PATTERN, NONE };
Match MatchOf(std::string_view name, std::string_view wanted);
const char* MatchWord(Match match);

// The key of a name in a hash table, equal for names that differ in case only.
uint32_t NameKey(std::string_view name);

}  // namespace scan695::ask
