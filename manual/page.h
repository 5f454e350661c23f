// Manual pages in mdoc. What --help says comes from there; what goes beyond it, examples mostly, is
// written by hand in tails/.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace scan695::manual {

// NAME, SYNOPSIS, DESCRIPTION and, where the help tells it, EXIT STATUS: of a subcommand, whose
// help text is its footer, or of scan695 itself if `app` has subcommands. Throws std::runtime_error
// for an option that nothing describes.
std::string PageOf(const CLI::App& app);

}  // namespace scan695::manual
