// What must not outlive the process: running children, private folders, unfinished files. A signal
// that ends the process gives them up first, at whatever moment it comes.
#pragma once

#include <cstdint>
#include <string>

namespace scan695::cli {

// To be called once, first of all.
void CleanUpOnSignals();

// From here on the file or the folder (removed when it is empty: what lies in it is to be guarded
// as well) is removed if the process is ended. Guard a path before it is created.
void Guard(const std::string& path);
// It is gone, or it has become a result.
void Release(const std::string& path);

void GuardChild(intptr_t process);
void ReleaseChild(intptr_t process);

// Gives up all that is guarded. Can be called from a signal handler.
void CleanUp();

}  // namespace scan695::cli
