// Paths of a run: extensions are cut and put as the messages show them, on upper-case text.
#pragma once

#include <string>

namespace scan695 {

// Cuts the extension of a path in place: what stands from the last point on, if no \ or : follows
// that point. A slash does not stop the search. True if one was cut.
bool StripExtension(std::string& path);

// The path with another extension, given without a point. A path longer than 115 characters comes
// back unchanged.
std::string ReplaceExtension(const std::string& path, const char* extension);

// The path of the FST file for an upper-case input path; never the input path itself.
std::string MakeFstPath(const std::string& input_path);

}  // namespace scan695
