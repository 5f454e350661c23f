// One run of the converter, from the opening of the input to the last byte of output.
#pragma once

#include <cstdint>

namespace scan695 {

// Starts fresh: drops all that an earlier run has left, an interrupt included. A path may be null,
// here and below, and is then one that cannot be opened.
void StartRun(uint32_t debug_mode, const char* stf_path);

// Converts the file; the result is 0. Failures end the process.
int32_t RunConversion(const char* input_path);

}  // namespace scan695
