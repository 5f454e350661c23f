// The checks behind Verify, one group of promises each. They take the sections as far as the file
// reaches; what is missing is reported by CheckLayout alone.
#pragma once

#include <cstdarg>
#include <string>
#include <vector>

#include "inspector/reader.h"

namespace scan695::inspector {

// For %llu, which all systems know.
inline unsigned long long Wide(uint64_t number) {
    return number;
}

struct Report {
    std::vector<std::string> lines;

    void Add(const char* format, ...) __attribute__((format(printf, 2, 3)));
};

// Fields of the header, order and gap-freeness of the sections, the end of the file.
void CheckLayout(const Fst& fst, Report& report);

// Which records belong to which module and block; modules, blocks and lines themselves.
void CheckScopes(const Fst& fst, Report& report);

// Symbols with their locations, types with their lists.
void CheckSymbols(const Fst& fst, Report& report);
void CheckTypes(const Fst& fst, Report& report);

// Indexes are sorted permutations of their slices.
void CheckIndexes(const Fst& fst, Report& report);

// The module ranges and the memory image.
void CheckRanges(const Fst& fst, Report& report);
void CheckCode(const Fst& fst, Report& report);

// A name in the stored area, padded with zeros. `what` and `number` tell whose it is. Gives its
// length, or -1 after a violation.
int CheckName(const Fst& fst, uint32_t offset, const char* what, uint64_t number, Report& report);

// A list of `size` bytes in the stored area. Gives false after a violation.
bool CheckList(const Fst& fst, uint32_t offset, uint32_t size, const char* what, uint64_t number,
               Report& report);

// False if a block has so many symbols that its count wrapped: then the symbol table lacks records,
// and record numbers behind the gap do not line up with it.
bool HasAllSymbols(const Fst& fst);

}  // namespace scan695::inspector
