#include "bench/measure.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "include/scan695.h"

namespace scan695::bench {

namespace {

double SecondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// Whether a library's stop counts as a good end is known when exit() is on its way.
bool MayStop = false;
void EndWell() {
    if (MayStop) std::_Exit(0);
}

}  // namespace

Cost Measure(int runs, const std::function<void()>& work) {
    using Clock = std::chrono::steady_clock;
    Cost best;
    for (int run = 0; run < runs; ++run) {
        std::fflush(stdout);
        const Clock::time_point begin = Clock::now();
        const pid_t child = fork();
        if (child == 0) work();
        int status = 0;
        rusage usage = {};
        if (wait4(child, &status, 0, &usage) != child || status != 0) {
            std::fprintf(stderr, "a run failed, status %x\n", static_cast<unsigned>(status));
            std::exit(2);
        }
        const std::chrono::duration<double> time = Clock::now() - begin;
        best.wall_seconds = std::min(best.wall_seconds, time.count());
        best.seconds =
            std::min(best.seconds, SecondsOf(usage.ru_utime) + SecondsOf(usage.ru_stime));
        best.megabytes = static_cast<double>(usage.ru_maxrss) / 1024;
    }
    return best;
}

void ConvertAndExit(const std::filesystem::path& input, const std::filesystem::path& stf,
                    bool debug, bool may_stop) {
    if (std::freopen("/dev/null", "w", stdout) == nullptr) std::_Exit(2);
    if (std::freopen("/dev/null", "r", stdin) == nullptr) std::_Exit(2);
    MayStop = may_stop;
    std::atexit(EndWell);
    std::_Exit(Convert(0, input.c_str(), stf.c_str(), debug ? 1 : 0) == nullptr ? 0 : 1);
}

}  // namespace scan695::bench
