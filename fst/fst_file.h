// The FST file on disk: the tail of a run with DebugMode, and the removal of the file by a fatal
// report. Nothing is written before the whole image is complete.
#pragma once

#include <cstdio>
#include <string>

namespace scan695 {

struct FstFileState {
    std::string FstPath;          // upper-case, for messages
    std::string place;            // where the file lies on disk
    std::string input;            // the path of the input as the host gave it
    std::FILE* handle = nullptr;  // open while the file is being written
};
extern FstFileState FstFile;

// Starts a run: no paths, no working arrays, and both at the hands of reports to come.
void StartFst();

// Sets the paths: of the input as the host gave it, and of the FST file as messages show it. Does
// not touch the disk.
void SetFstPath(const std::string& host_path, const std::string& fst_path);

// Closes and removes the FST file, also one that an earlier run has left. Leaves the input alone
// where both names lead to one file.
void RemoveFstFile();

// Post-processes the tables, completes the header, and saves the image. A failure ends the run and
// leaves no FST file.
void FinishFstFile();

}  // namespace scan695
