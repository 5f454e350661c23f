// The outputs of a conversion. The library writes to private files, and what the user named is
// touched only when all of them are complete: a regular file is created or replaced in one step,
// anything else (standard output, a device, a pipe) gets a copy of the bytes.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace scan695::cli {

struct Output {
    std::string name;        // as the user wrote it; "-" is standard output
    std::string final_path;  // the regular file to create or replace; empty for a copy
    int descriptor = -1;     // where a copy goes

    std::string staged;       // the file with the finished bytes, on the file system of final_path
    std::string second_name;  // of an older file at final_path, as long as it may have to come back
    bool is_new = false;      // nothing was at final_path
};

// What to say when an output cannot be written: "cannot write OUT: reason".
std::string WriteFailure(const std::string& name, const std::string& reason);

// Finds out what `name` is and whether it can be written, without touching it. Gives the cause of a
// failure.
std::optional<std::string> OpenOutput(const std::string& name, Output& output);

// The folder of final_path.
std::string FolderOf(const Output& output);

// Gives up what has not been delivered.
void CloseOutput(Output& output);

// Checks that a staged STF file is complete: the library does not notice a failed write.
std::optional<std::string> CheckStf(const std::string& path, const std::string& name);

// Why nothing can be written in the folder; a general answer if something can.
std::string WhyNoRoom(const std::string& folder);

// Brings the staged files to their places, all or none. Gives the cause of a failure.
std::optional<std::string> Deliver(std::vector<Output>& outputs);

}  // namespace scan695::cli
