// What the path of a source file tells: its language, its base name, its module.
#pragma once

namespace scan695 {

// True when the path contains ".c" or ".C" anywhere.
bool IsCName(const char* path);

// What follows the last \ or / of the path.
char* BaseName(char* path);

// The name of the module that a path stands for: cuts the path at its first point, takes the base
// name, and cuts that at 31 characters; all in place.
char* ModuleNameOf(char* path);

}  // namespace scan695
