// scan695: the command over the library. A host like any other: what it knows of conversions is
// include/scan695.h.
#include <exception>
#include <string>
#include <vector>

#include "cli/cleanup.h"
#include "cli/command.h"
#include "cli/commands.h"
#include "cli/complain.h"
#include "cli/host.h"

int main(int argc, char** argv) {
    using namespace scan695::cli;
    ClaimStandardStreams();
    const std::vector<std::string> arguments = ArgumentsOf(argc, argv);
    const int child_status = RunAsChild(arguments);
    if (child_status != -1) return child_status;
    CleanUpOnSignals();
    try {
        return RunCommandLine(arguments);
    } catch (const std::exception& error) {  // no memory, say
        CleanUp();
        Complain(error.what());
        return FAILED;
    }
}
