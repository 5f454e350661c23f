// What the first bytes of a file tell.
#pragma once

#include <string>

namespace scan695::cli {

// The first bytes of a file; fewer if it has fewer, none if it cannot be read.
std::string HeadOf(const std::string& path);

bool IsObject(const std::string& head);
bool IsDatabase(const std::string& head);

// The same as far as the first byte tells.
bool BeginsObject(char byte);
bool BeginsDatabase(char byte);

}  // namespace scan695::cli
