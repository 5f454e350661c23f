// The report: a page of HTML that holds everything it needs, style, script and the program as the
// JSON document of "scan695 show --json". The page itself is report.html with its parts, joined at
// build time; it is the same for every program.
#pragma once

#include <iosfwd>
#include <string_view>

namespace scan695::page {

// Writes the page with its data. `document` is one JSON document in UTF-8; nothing in it is taken
// for markup. Failure shows in the state of `out`.
void WritePage(std::string_view document, std::ostream& out);

}  // namespace scan695::page
