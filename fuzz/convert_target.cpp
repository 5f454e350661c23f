// A whole conversion; built twice, with and without DebugMode (FUZZ_DEBUG_MODE). Besides what the
// sanitizers see, every run has to keep these promises: it ends with status 0 or 1; the input stays
// as it was; a complete STF file ends with a line's end; an FST file is left behind by a good debug
// run only, and the inspector finds nothing wrong with it.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

#include "fuzz/object_parts.h"
#include "fuzz/target.h"
#include "harness/in_process.h"
#include "inspector/verify.h"

namespace scan695::fuzz {
namespace {

constexpr bool DEBUG = FUZZ_DEBUG_MODE != 0;

// Where the files lie. Console output is thrown away.
struct Workshop {
    const std::filesystem::path directory = harness::ScratchDirectory();
    const std::filesystem::path input = directory / "t.abs";
    const std::filesystem::path stf = directory / "t.stf";
    const std::filesystem::path fst = directory / "T.FST";
    Workshop() {
        const int null = open("/dev/null", O_RDWR);
        dup2(null, 0);
        dup2(null, 1);
        close(null);
    }
};

void CheckFst(const Workshop& files, bool expected) {
    if ((std::filesystem::exists(files.fst)) != expected)
        Broken("an FST file after a good debug run only");
    if (!expected) return;
    inspector::Fst fst;
    std::string error;
    if (!inspector::Load(files.fst, fst, error)) Broken("a readable FST file:", error.c_str());
    const std::vector<std::string> violations = inspector::Verify(fst);
    if (!violations.empty()) Broken("a sound FST file:", violations[0].c_str());
}

}  // namespace
}  // namespace scan695::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace scan695;
    using namespace scan695::fuzz;
    static const Workshop files;
    if (RepeatsTooMuch(data, size)) return 0;
    harness::WriteWholeFile(files.input, {data, data + size});
    std::filesystem::remove(files.fst);
    const int status = harness::RunConvert(files.input, files.stf, DEBUG);
    if (status != 0 && status != 1) Broken("status 0 or 1");
    const std::string now = harness::ReadWholeFile(files.input);
    if (!std::equal(now.begin(), now.end(), data, data + size,
                    [](char a, uint8_t b) { return static_cast<uint8_t>(a) == b; }))
        Broken("the input stays");
    if (status == 0 && !harness::ReadWholeFile(files.stf).ends_with("\r\n"))
        Broken("a complete STF file");
    CheckFst(files, DEBUG && status == 0);
    return 0;
}
