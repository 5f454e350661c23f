// Runs Convert in this process at full speed: the end of the process on a fatal stop is caught at
// exit(), which programs that use this are linked to have wrapped (scan695_test(... IN_PROCESS)).
#pragma once

#include <filesystem>

#include "harness/convert.h"

namespace scan695::harness {

// Runs Convert and gives the status, 0 or that given to exit(). Console and files stay where they
// are.
int RunConvert(const std::filesystem::path& input, const std::filesystem::path& stf, bool debug);

// Converts the file at `input`; the results are those of a run in a process of its own, the status
// 0 or that given to exit(). Standard output is read back through a file meanwhile.
Converted ConvertInProcess(const std::filesystem::path& input, const std::filesystem::path& stf,
                           bool debug);

}  // namespace scan695::harness
