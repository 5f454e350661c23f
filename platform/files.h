// What differs between systems about files: the length of an open one and how it is buffered,
// whether two paths name the same one, and where the FST file lies on disk.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace scan695 {

// The length of an open file in bytes; -1 when the system does not tell.
int64_t FileLength(std::FILE* file);

// True for a stream that gathers its text into blocks, as files and pipes are written; false for
// one that shows each line or byte at once, and where the system does not tell.
bool IsBlockBuffered(std::FILE* file);

// True when both paths lead to the same existing file (links followed).
bool IsSameFile(const std::string& a, const std::string& b);

// Removes a file, if there is one; never a directory.
void RemoveFile(const std::string& path);

// The place of the FST file on disk. `fst_path` is upper-case text as the messages show it. Where
// file names tell cases apart, the file lies in the directory of `input_path`, in the host's own
// spelling, under the base name of `fst_path`: "/home/ann/prog.abs" with "/HOME/ANN/PROG.FST" gives
// "/home/ann/PROG.FST". Elsewhere it is `fst_path` itself.
std::string PlaceOfFstFile(const std::string& input_path, const std::string& fst_path);

}  // namespace scan695
