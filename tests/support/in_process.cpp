#include "tests/support/in_process.h"

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

extern "C" {
[[noreturn]] void __real_exit(int status);
[[noreturn]] void __wrap_exit(int status);

void __wrap_exit(int status) {
    if (Converting) throw ProcessEnd{status};
    __real_exit(status);
}
}

namespace scan695::test {

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

// Standard output goes to a file, standard input is empty, for as long as this lives.
class Redirection {
  public:
    explicit Redirection(const std::filesystem::path& console) {
        std::fflush(stdout);
        saved_out_ = dup(1);
        saved_in_ = dup(0);
        Replace(1, open(console.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644));
        Replace(0, open("/dev/null", O_RDONLY));
        std::clearerr(stdin);
    }
    ~Redirection() {
        std::fflush(stdout);
        Replace(1, saved_out_);
        Replace(0, saved_in_);
    }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;

  private:
    static void Replace(int number, int with) {
        dup2(with, number);
        close(with);
    }
    int saved_out_ = -1;
    int saved_in_ = -1;
};

}  // namespace

Converted ConvertInProcess(const std::filesystem::path& input, const std::filesystem::path& stf,
                           bool debug) {
    static const std::filesystem::path console = ScratchDirectory() / "console";
    Converted result;
    {
        const Redirection redirection(console);
        result.status = RunConvert(input, stf, debug);
    }
    result.console = ReadWholeFile(console);
    result.stf = ReadWholeFile(stf);
    result.fst = ReadWholeFile(FstFileOf(input));
    return result;
}

}  // namespace scan695::test
