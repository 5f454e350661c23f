// The checks behind Verify, one group of promises each. They take the sections as far as the file
// reaches; what is missing is reported by CheckLayout alone.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "inspector/lists.h"
#include "inspector/lookup.h"

// Lets compilers that know how compare the arguments of Add with its format.
#if defined(__GNUC__)
#define SCAN695_FORMAT [[gnu::format(printf, 2, 3)]]
#else
#define SCAN695_FORMAT
#endif

namespace scan695::inspector {

// For %llu, which all systems know.
inline unsigned long long Wide(uint64_t number) {
    return number;
}

// A line for each violation.
struct Findings {
    std::vector<std::string> lines;

    SCAN695_FORMAT void Add(const char* format, ...);
};

// Fields of the header, order and gap-freeness of the sections, the end of the file.
void CheckLayout(const Fst& fst, Findings& findings);

// Which records belong to which module and block; modules, blocks and lines themselves.
void CheckScopes(const Fst& fst, Findings& findings);

// Symbols with their locations, types with their lists.
void CheckSymbols(const Fst& fst, Findings& findings);
void CheckTypes(const Fst& fst, Findings& findings);

// Indexes are sorted permutations of their slices.
void CheckIndexes(const Fst& fst, Findings& findings);

// The module ranges and the memory image.
void CheckRanges(const Fst& fst, Findings& findings);
void CheckCode(const Fst& fst, Findings& findings);

// A name in the stored area, padded with zeros. `what` and `number` tell whose it is. Gives its
// length, or -1 after a violation.
int CheckName(const Fst& fst, uint32_t offset, const char* what, uint64_t number,
              Findings& findings);

// Tells which lists have been looked through, by kind of their elements: those that copies of a
// type share are looked through once.
struct CheckedLists {
    ListSet lists;
    std::vector<uint8_t> kinds_done = std::vector<uint8_t>(lists.places().size());  // a bit each
};

// A list in the stored area. Gives true when its elements are to be checked as those of a kind, and
// false after a violation.
bool CheckList(const Fst& fst, ListPlace place, uint8_t kind, const char* what, uint64_t number,
               CheckedLists& checked, Findings& findings);

}  // namespace scan695::inspector
