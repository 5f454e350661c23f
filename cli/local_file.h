// FILE as something that can be looked into more than once.
#pragma once

#include <string>

#include "cli/staging.h"

namespace scan695::cli {

// A regular file as it stands, or a private copy of what standard input or a pipe gives. Goes with
// this object.
struct LocalFile {
    explicit LocalFile(const std::string& file, bool waits_for_writer = true);
    ~LocalFile();
    LocalFile(const LocalFile&) = delete;
    LocalFile& operator=(const LocalFile&) = delete;

    std::string path;
    std::string cause;  // why there is none; empty for success

  private:
    Staging staging_;
};

}  // namespace scan695::cli
