// The standard streams during a conversion: where the library's console lines go and what its
// prompt reads.
#pragma once

#include <string>

namespace scan695::cli {

enum class ConsoleTarget {
    STDOUT,   // as the library writes them
    STDERR,   // standard output carries the result
    NOWHERE,  // only the last few are kept
};

// From here on the library's console lines go to the target. Gives false with errno set.
bool OpenConsole(ConsoleTarget target);

// Standard output is the process's own again. Does nothing when the console is not open.
void CloseConsole();

// The message of a fatal stop, if the console that was closed last went NOWHERE and held one.
std::string FatalMessage();

// The library's prompt meets the end of its input.
bool SilencePrompt();

}  // namespace scan695::cli
