// Writes mdoc, the language of manual pages that names what things are: .Fl a flag, .Ar an
// argument.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace scan695::manual {

// "-o, --output OUT" as "Fl o , Fl -output Ar OUT": words in upper case are arguments.
std::string MacrosOf(const std::string& words);

// A whole command line, as "scan695 find FILE QUERY... [--json]" of the subcommand "find".
void WriteUsage(const std::string& usage, const std::string& name, std::ostream& out);

// The names that command lines have for arguments, FILE among them, longest first.
std::vector<std::string> ArgumentNames(const std::vector<std::string>& usages);

// Prose, in which the names of `arguments` stand out.
void WriteText(const std::string& text, const std::vector<std::string>& arguments,
               std::ostream& out);

}  // namespace scan695::manual
