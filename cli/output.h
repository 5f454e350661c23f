// The output of a conversion. The library writes to a temporary file, and what is named OUT is
// touched only when that file is complete: a regular file is replaced by it in one step, anything
// else (standard output, a device, a pipe) gets a copy of its bytes.
#pragma once

#include <optional>
#include <string>

namespace scan695::cli {

struct Output {
    std::string library_path;  // the temporary file
    std::string final_path;    // the regular file to replace or create; empty for a copy
    int descriptor = -1;       // where the copy goes; -1 for a regular file
};

// What stands in the way, and whether the command line is to blame for it.
struct Problem {
    std::string what;
    bool is_usage = false;
};

// Finds out what `out` is ("-" is standard output) and makes sure that it can be written, without
// touching it. `out` must not be the same file as `input`.
std::optional<Problem> OpenOutput(const std::string& out, const std::string& input, Output& output);

// Checks that the temporary file is complete and moves it to its place. The library does not notice
// a failed write, so a file that is cut off shows here for the first time.
std::optional<Problem> FinishOutput(const Output& output);

// The default name of the output: the input's with the extension .stf, or "-" for "-".
std::string DefaultOutput(const std::string& input);

// True if a debug conversion of `input` would put its FST file in the place of `out`.
bool IsFstFileOf(const std::string& input, const std::string& out);

}  // namespace scan695::cli
