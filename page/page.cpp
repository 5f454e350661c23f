#include "page/page.h"

#include <ostream>
#include <vector>

namespace scan695::page {

extern const std::vector<std::string_view> PAGE_HEAD;  // up to the data
extern const std::vector<std::string_view> PAGE_TAIL;

namespace {

// In JSON a "<" stands in strings only, where it may be escaped. Without it, no name can end the
// script element that holds the data or begin a comment in it.
void WriteData(std::string_view document, std::ostream& out) {
    while (!document.empty()) {
        const size_t end = document.find('<');
        out << document.substr(0, end);
        if (end == std::string_view::npos) return;
        out << "\\u003c";
        document.remove_prefix(end + 1);
    }
}

}  // namespace

void WritePage(std::string_view document, std::ostream& out) {
    for (const std::string_view piece : PAGE_HEAD) out << piece;
    WriteData(document, out);
    for (const std::string_view piece : PAGE_TAIL) out << piece;
}

}  // namespace scan695::page
