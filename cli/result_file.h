// OUT of a subcommand that makes one file by itself, by the rules that hold for conversions: what
// the user named is touched when the file is complete and not before, a regular file is created or
// replaced in one step, standard output ("-"), devices and pipes get a copy.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/output.h"
#include "cli/staging.h"

namespace scan695::cli {

struct ResultFile {
    ResultFile() = default;
    ~ResultFile();  // gives up what has not been delivered
    ResultFile(const ResultFile&) = delete;
    ResultFile& operator=(const ResultFile&) = delete;

    int descriptor = -1;  // of an empty regular file: write the bytes here

    // The part of this file.
    Staging staging;
    Output output;
};

// Begins a result for OUT. Throws UsageError if OUT is empty or FILE itself. Gives the cause of a
// failure, "cannot write OUT: reason".
std::optional<std::string> OpenResult(const std::string& file, const std::string& out,
                                      ResultFile& result);

// Writes bytes to the descriptor.
std::optional<std::string> WriteResult(ResultFile& result, std::string_view bytes);

// Closes the descriptor and brings the file to its place.
std::optional<std::string> DeliverResult(ResultFile& result);

}  // namespace scan695::cli
