// What an FST file says about itself as a whole.
#pragma once

#include <string>
#include <vector>

#include "inspector/reader.h"
#include "inspector/tables.h"

namespace scan695::inspector {

struct SectionItem {
    const char* name;
    uint64_t offset;
    uint64_t entries;  // 0 for the stored area, whose items have no directory
    uint64_t size;
};

struct HeaderItem {
    const char* name;
    Cell cell;
};

// The header, item by item, but for the sizes of the basic types.
std::vector<HeaderItem> HeaderItems(const Fst& fst);

// These as one text.
std::string BasicSizesText(const Fst& fst);

// The sections that the file has, in file order, the header and the stored area included.
std::vector<SectionItem> SectionItems(const Fst& fst);

}  // namespace scan695::inspector
