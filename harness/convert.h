// Runs Convert as a host would, in a child process, since a fatal condition ends the process.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace scan695::harness {

struct Converted {
    int status = -1;      // exit status of the process; 128 + n for a signal
    std::string console;  // standard output
    std::string stf;      // the STF file, empty when there is none
    std::string fst;      // the FST file, empty when there is none
};

// A new empty directory for the running test, removed at the end of the process.
std::filesystem::path ScratchDirectory();

// Empty where there is no file.
std::string ReadWholeFile(const std::filesystem::path& path);
void WriteWholeFile(const std::filesystem::path& path, const std::vector<uint8_t>& bytes);

// Runs something in a child process, with standard input empty, and gives its status and console.
Converted InChild(const std::function<int()>& run);

// Converts the bytes as the file "t.abs" in a scratch directory; standard input is empty.
Converted ConvertBytes(const std::vector<uint8_t>& bytes, bool debug = false);
// Converts a file where it lies; the STF file goes to `stf`.
Converted ConvertFile(const std::filesystem::path& input, const std::filesystem::path& stf,
                      bool debug = false);

// Where the FST file of an input lies: beside it, under the base name in upper case.
std::filesystem::path FstFileOf(const std::filesystem::path& input);

// The text with CR LF turned into LF, for comparison with text in the tests.
std::string UnixLines(const std::string& text);

}  // namespace scan695::harness
