// Runs conversions side by side, watches over them, and tells the user how they went.
#pragma once

#include <functional>
#include <vector>

#include "cli/conversion.h"

namespace scan695::cli {

struct RunOptions {
    size_t jobs = 1;     // children at a time
    bool quiet = false;  // only errors are told
};

// Runs all conversions; calls `finished` for each as it ends, successful or not, before it is
// dropped. On a terminal it shows what is under way.
void RunConversions(const std::vector<Request>& requests, const RunOptions& options,
                    const std::function<void(Conversion&)>& finished);

// Tells of the warnings and of the cause of a failure, "scan695: FILE: ...". True for a success.
bool TellOutcome(const Conversion& conversion, bool quiet);

}  // namespace scan695::cli
