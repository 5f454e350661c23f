// A whole conversion; built twice, with and without DebugMode (FUZZ_DEBUG_MODE). Besides what the
// sanitizers see, every run has to keep these promises: it ends with status 0 or 1; the input stays
// as it was; a complete STF file ends with a line's end; an FST file is left behind by a good debug
// run only, and the inspector finds nothing wrong with it.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <vector>

#include "cli/inspector/verify.h"
#include "fuzz/object_parts.h"
#include "fuzz/target.h"
#include "tests/support/in_process.h"

namespace scan695::fuzz {
namespace {

constexpr bool DEBUG = FUZZ_DEBUG_MODE != 0;

// In memory where the system has a place for that. Console output is thrown away.
class Workshop {
  public:
    Workshop() {
        const bool shared_memory = access("/dev/shm", W_OK) == 0;
        directory_ = std::string(shared_memory ? "/dev/shm" : "/tmp") + "/scan695-fuzz-XXXXXX";
        if (mkdtemp(directory_.data()) == nullptr) Broken("a directory to work in");
        const int null = open("/dev/null", O_RDWR);
        dup2(null, 0);
        dup2(null, 1);
        close(null);
    }
    ~Workshop() {
        for (const std::string& path : {Input(), Stf(), Fst()}) unlink(path.c_str());
        rmdir(directory_.c_str());
    }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    std::string Input() const { return directory_ + "/t.abs"; }
    std::string Stf() const { return directory_ + "/t.stf"; }
    std::string Fst() const { return directory_ + "/T.FST"; }

  private:
    std::string directory_;
};

void Write(const std::string& path, const uint8_t* data, size_t size) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0 || write(file, data, size) != static_cast<ssize_t>(size))
        Broken("a file can be written");
    close(file);
}

void CheckInput(const Workshop& files, const uint8_t* data, size_t size) {
    const std::string now = test::ReadWholeFile(files.Input());
    if (now.size() != size || std::memcmp(now.data(), data, size) != 0) Broken("the input stays");
}

void CheckStf(const Workshop& files) {
    char end[2] = {};
    const int file = open(files.Stf().c_str(), O_RDONLY);
    if (file < 0 || lseek(file, -2, SEEK_END) < 0 || read(file, end, 2) != 2) end[0] = 0;
    close(file);
    if (std::memcmp(end, "\r\n", 2) != 0) Broken("a complete STF file");
}

void CheckFst(const Workshop& files, bool expected) {
    if ((access(files.Fst().c_str(), F_OK) == 0) != expected)
        Broken("an FST file after a good debug run only");
    if (!expected) return;
    inspector::Fst fst;
    std::string error;
    if (!inspector::Load(files.Fst(), fst, error)) Broken("a readable FST file:", error.c_str());
    const std::vector<std::string> violations = inspector::Verify(fst);
    if (!violations.empty()) Broken("a sound FST file:", violations[0].c_str());
}

}  // namespace
}  // namespace scan695::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace scan695::fuzz;
    static const Workshop files;
    if (RepeatsTooMuch(data, size)) return 0;
    Write(files.Input(), data, size);
    unlink(files.Fst().c_str());
    const int status = scan695::test::RunConvert(files.Input(), files.Stf(), DEBUG);
    if (status != 0 && status != 1) Broken("status 0 or 1");
    CheckInput(files, data, size);
    if (status == 0) CheckStf(files);
    CheckFst(files, DEBUG && status == 0);
    return 0;
}
