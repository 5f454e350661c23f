#include "harness/in_process.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "include/scan695.h"

namespace {

// Thrown in place of the end of the process, so that what the run holds is given back.
struct ProcessEnd {
    int status;
};
bool Converting = false;

}  // namespace

// The names that the linker gives to a wrapped function and its wrapper.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
[[noreturn]] void __real_exit(int status);
[[noreturn]] void __wrap_exit(int status);

void __wrap_exit(int status) {
    if (Converting) throw ProcessEnd{status};
    __real_exit(status);
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace scan695::harness {

int RunConvert(const std::filesystem::path& input, const std::filesystem::path& stf, bool debug) {
    Converting = true;
    int status = 0;
    try {
        status = Convert(0, input.c_str(), stf.c_str(), debug ? 1 : 0) == nullptr ? 0 : 98;
    } catch (const ProcessEnd& end) {
        status = end.status;
    }
    Converting = false;
    return status;
}

namespace {

void Replace(int number, int with) {
    dup2(with, number);
    close(with);
}

}  // namespace

Converted ConvertInProcess(const std::filesystem::path& input, const std::filesystem::path& stf,
                           bool debug) {
    static const std::filesystem::path console = ScratchDirectory() / "console";
    std::fflush(stdout);
    const int saved_in = dup(0);
    const int saved_out = dup(1);
    Replace(0, open("/dev/null", O_RDONLY));
    Replace(1, open(console.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644));
    std::clearerr(stdin);
    Converted result;
    result.status = RunConvert(input, stf, debug);
    std::fflush(stdout);
    Replace(0, saved_in);
    Replace(1, saved_out);
    result.console = ReadWholeFile(console);
    result.stf = ReadWholeFile(stf);
    result.fst = ReadWholeFile(FstFileOf(input));
    return result;
}

}  // namespace scan695::harness
