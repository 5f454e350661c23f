// What the library prints during a conversion, on its way to the user: the private names are put
// right, the warnings are picked out, and the report of a fatal stop loses its BEL and its prompt.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace scan695::cli {

struct Console {
    // A name that the library prints, and what stands for it in the trace.
    struct Name {
        std::string printed;
        std::string shown;
    };
    std::vector<Name> names;

    std::string pending;                // not passed on yet
    std::string tail;                   // the end of what was passed on, as it was printed
    std::vector<std::string> warnings;  // each once
    std::set<std::string> seen;
};

// Takes in what the child has printed; what can be passed on is appended to `trace`.
void ReadConsole(Console& console, const char* bytes, size_t size, std::string& trace);

// At the end of a child: passes on the rest.
void EndConsole(Console& console, std::string& trace);

// The message of the fatal stop if the console has ended with a report of one.
std::string FatalMessage(const Console& console);

}  // namespace scan695::cli
