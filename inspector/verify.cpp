#include "inspector/verify.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "inspector/checks.h"

namespace scan695::inspector {

void Findings::Add(const char* format, ...) {
    char text[256];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    lines.emplace_back(text);
}

int CheckName(const Fst& fst, uint32_t offset, const char* what, uint64_t number,
              Findings& findings) {
    const auto name = NameAt(fst, offset);
    if (!name) {
        findings.Add("%s %llu: no name at offset 0x%x", what, Wide(number), offset);
        return -1;
    }
    const uint64_t end = offset + name->size() + 1;
    const uint64_t padded = std::min<uint64_t>((end + 3) & ~uint64_t{3}, fst.stored_end);
    const auto* bytes = fst.bytes.data();
    const bool is_padded =
        std::all_of(bytes + end, bytes + padded, [](uint8_t byte) { return byte == 0; });
    if (offset % 4 != 0 || !is_padded) {
        findings.Add("%s %llu: name at offset 0x%x is %s", what, Wide(number), offset,
                     is_padded ? "not at a multiple of 4" : "not padded with zeros");
        return -1;
    }
    return static_cast<int>(name->size());
}

bool CheckList(const Fst& fst, ListPlace place, uint8_t kind, const char* what, uint64_t number,
               CheckedLists& checked, Findings& findings) {
    const uint32_t offset = place.offset;
    const uint32_t size = place.count * LIST_ELEMENT_BYTES;
    if (offset < sizeof(FstHeader) || offset % 4 != 0 || uint64_t{offset} + size > fst.stored_end) {
        findings.Add("%s %llu: list of %u bytes at offset 0x%x is not in the stored area", what,
                     Wide(number), size, offset);
        return false;
    }
    const auto list = checked.lists.Find(place);
    if (!list) {
        findings.Add("%s %llu: list of %u bytes at offset 0x%x lies over another", what,
                     Wide(number), size, offset);
        return false;
    }
    uint8_t& done = checked.kinds_done[*list];
    const bool is_new = (done >> kind & 1) == 0;
    done = static_cast<uint8_t>(done | 1U << kind);
    return is_new;
}

std::vector<std::string> Verify(const Fst& fst) {
    Findings findings;
    CheckLayout(fst, findings);
    CheckScopes(fst, findings);
    CheckTypes(fst, findings);
    CheckSymbols(fst, findings);
    CheckIndexes(fst, findings);
    CheckRanges(fst, findings);
    CheckCode(fst, findings);
    return findings.lines;
}

}  // namespace scan695::inspector
