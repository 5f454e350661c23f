// The library's messages in the words of the command: the cause behind "scan695: FILE: ".
#pragma once

#include <string>

namespace scan695::cli {

// What the message of a fatal stop says about FILE. Messages about outputs are not translated: the
// library tells neither which one nor why.
std::string CauseOf(const std::string& message);

// True for a message about an output that could not be opened or written.
bool IsOutputMessage(const std::string& message);

}  // namespace scan695::cli
