// Files that must not outlive the process: unfinished outputs and the copy of standard input.
#pragma once

#include <string>

namespace scan695::cli {

// Creates an empty file with a name of its own in `directory` (empty: the working directory), open
// for writing. `is_private`: readable by the owner alone. The file is removed by RemoveTempFiles
// unless KeepTempFile comes first. Gives a descriptor, or -1 with errno set and `path` empty.
int CreateTempFile(const std::string& directory, bool is_private, std::string& path);

// The same in the system's directory for temporary files, always private.
int CreateTempFile(std::string& path);

// The file has become a result (or is gone) and is not removed any more.
void KeepTempFile(const std::string& path);

void RemoveTempFile(const std::string& path);

// Removes all that are left. Can be called from a signal handler.
void RemoveTempFiles();

}  // namespace scan695::cli
