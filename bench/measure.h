// Times whole runs, each in a process of its own, so that one never profits from another.
#pragma once

#include <filesystem>
#include <functional>

namespace scan695::bench {

struct Cost {
    double seconds = 1e9;       // of the processor, in user and system mode: the best run
    double wall_seconds = 1e9;  // of the clock, the best run
    double megabytes = 0;       // largest resident memory of the last run
};

// Runs `work` in `runs` child processes; it has to end its process with status 0. A run that does
// not ends the program with status 2.
Cost Measure(int runs, const std::function<void()>& work);

// A conversion as the work of Measure: the console is thrown away. A file that the library refuses
// is a good run too when `may_stop` is set.
[[noreturn]] void ConvertAndExit(const std::filesystem::path& input,
                                 const std::filesystem::path& stf, bool debug,
                                 bool may_stop = false);

}  // namespace scan695::bench
