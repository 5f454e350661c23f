// scan695: the command over the library. A host like any other: what it knows of conversions is
// include/scan695.h.
#include <exception>

#include "cli/commands.h"
#include "cli/complain.h"
#include "cli/host.h"
#include "cli/temp_files.h"

int main(int argc, char** argv) {
    using namespace scan695::cli;
    ClaimStandardStreams();
    try {
        return RunCommandLine(argc, argv);
    } catch (const std::exception& error) {  // no memory, say
        RemoveTempFiles();
        Complain(error.what());
        return FAILED;
    }
}
