// Reads and writes that fail. Whatever happens, the input stays as it was.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "harness/in_process.h"
#include "include/scan695.h"
#include "tests/faults/hooks.h"
#include "tests/support/samples.h"
#include "tests/support/test.h"

namespace scan695::test {
namespace {

namespace fs = std::filesystem;
using enum fs::file_type;
using Path = const fs::path&;

const std::string OPEN_INPUT = "Error: cannot open object/symbol file\n";
const std::string OPEN_OUTPUT = "Error: cannot open output file\n";
const std::string WRITE_OUTPUT = "Error: cannot write to output file\n";

class Files : public testing::Test {
  protected:
    Files() { WriteWholeFile(input_, bytes_); }
    ~Files() override {
        Faults = Hooks();
        const std::string now = ReadWholeFile(input_);
        EXPECT_TRUE(now == std::string(bytes_.begin(), bytes_.end()));
    }

    std::vector<uint8_t> bytes_ = SampleBytes("tricore.abs");
    fs::path directory_ = ScratchDirectory();
    fs::path input_ = directory_ / "t.abs";
    fs::path stf_ = directory_ / "t.stf";
    fs::path fst_ = directory_ / "T.FST";
};

TEST_F(Files, Input) {
    fs::create_directory(directory_ / "directory");
    WriteWholeFile(directory_ / "empty", {});
    const struct {
        const char* what;
        std::string path;
        std::string message;
    } cases[] = {
        {"missing", "nothing.abs", OPEN_INPUT},
        {"below a file", "t.abs/t.abs", OPEN_INPUT},
        {"missing directory", "nothing/t.abs", OPEN_INPUT},
        {"a path longer than the system takes", std::string(5000, 'x'), OPEN_INPUT},
        {"a directory", "directory", NO_MEMORY},
        {"empty", "empty", "Unexpected end of file at 0\n"},
    };
    for (const auto& c : cases)
        for (const bool debug : {false, true})
            EXPECT_TRUE(StoppedWith(ConvertFile(directory_ / c.path, stf_, debug), c.message))
                << c.what;
    EXPECT_TRUE(fs::is_directory(directory_ / "directory"));
}

TEST_F(Files, NullPaths) {
    const char* const input = input_.c_str();
    const char* const stf = stf_.c_str();
    const auto run = [](const char* from, const char* to) {
        return InChild([=] { return Convert(0, from, to, 1) == nullptr ? 0 : 98; });
    };
    EXPECT_TRUE(StoppedWith(run(nullptr, stf), OPEN_INPUT));
    EXPECT_TRUE(StoppedWith(run(nullptr, nullptr), OPEN_INPUT));
    EXPECT_TRUE(StoppedWith(run(input, nullptr), OPEN_OUTPUT));
    EXPECT_FALSE(fs::exists(stf_));
}

TEST_F(Files, ShortRead) {
    Faults.short_read = true;
    const Converted result = ConvertInProcess(input_, stf_, true);
    EXPECT_TRUE(StoppedWith(result, NO_MEMORY)) << result.console;
    EXPECT_FALSE(fs::exists(stf_));
}

TEST_F(Files, Stf) {
    fs::create_symlink("t.abs", directory_ / "link");
    fs::create_hard_link(input_, directory_ / "hard");
    for (const char* path :
         {"t.abs/t.stf", "nothing/t.stf", ".", "t.abs", "./t.abs", "link", "hard"})
        for (const bool debug : {false, true})
            EXPECT_TRUE(StoppedWith(ConvertFile(input_, directory_ / path, debug), OPEN_OUTPUT))
                << path;
    // A write that fails isn't noticed.
    EXPECT_EQ(ConvertFile(input_, "/dev/full", false).status, 0);
    const Converted result = ConvertFile(input_, "/dev/full", true);
    EXPECT_EQ(result.status, 0);
    EXPECT_FALSE(result.fst.empty());
}

TEST_F(Files, Fst) {
    const struct {
        const char* what;
        void (*prepare)(Path fst);
        std::string message;
        fs::file_type left;  // at the place of the FST file
    } cases[] = {
        {"a directory", [](Path fst) { fs::create_directory(fst); }, OPEN_OUTPUT, directory},
        {"a link to the input", [](Path fst) { fs::create_symlink("t.abs", fst); }, OPEN_OUTPUT,
         symlink},
        {"a hard link to the input",
         [](Path fst) { fs::create_hard_link(fst.parent_path() / "t.abs", fst); }, OPEN_OUTPUT,
         regular},
        {"a link into nothing", [](Path fst) { fs::create_symlink("no/where", fst); }, OPEN_OUTPUT,
         not_found},
        {"a full disk", [](Path fst) { fs::create_symlink("/dev/full", fst); }, WRITE_OUTPUT,
         not_found},
    };
    for (const auto& c : cases) {
        c.prepare(fst_);
        const Converted result = ConvertFile(input_, stf_, true);
        EXPECT_EQ(result.status, 1) << c.what;
        EXPECT_TRUE(result.console.ends_with(c.message + PROMPT)) << c.what << result.console;
        EXPECT_TRUE(result.stf.ends_with("}\r\n")) << c.what;
        EXPECT_EQ(fs::symlink_status(fst_).type(), c.left) << c.what;
        fs::remove_all(fst_);
    }
    EXPECT_TRUE(fs::exists("/dev/full"));
}

// A limit on the size of files stands for a disk that fills at that place.
TEST_F(Files, DiskFillsDuringTheSave) {
    const Converted sound = ConvertFile(input_, stf_, true);
    ASSERT_EQ(sound.status, 0);
    for (const size_t room : {size_t{0}, size_t{1}, sound.fst.size() / 2, sound.fst.size() - 1}) {
        const Converted result = InChild([&] {
            const struct rlimit limit = {room, RLIM_INFINITY};
            std::signal(SIGXFSZ, SIG_IGN);
            setrlimit(RLIMIT_FSIZE, &limit);
            return RunConvert(input_, "/dev/null", true);
        });
        EXPECT_EQ(result.status, 1) << room;
        EXPECT_FALSE(fs::exists(fst_)) << room;
    }
}

// Permissions that are missing, also to an FST file of an earlier run. They do not hold for root,
// so root is given up first.
TEST_F(Files, Permissions) {
    const fs::path out = ScratchDirectory();
    const std::string old = "old";
    const struct {
        const char* what;
        mode_t place, input, fst, out;
        std::string message;
        bool fst_stays;
    } cases[] = {
        {"STF directory", 0777, 0444, 0666, 0555, OPEN_OUTPUT, false},
        {"input", 0777, 0222, 0666, 0777, OPEN_INPUT, false},
        {"input in a read-only place", 0555, 0222, 0666, 0777, OPEN_INPUT, true},
        {"FST file", 0777, 0444, 0444, 0777, OPEN_OUTPUT, false},
        {"FST file in a read-only place", 0555, 0444, 0444, 0777, OPEN_OUTPUT, true},
    };
    chmod(out.parent_path().c_str(), 0755);
    const auto set_modes = [&](mode_t place, mode_t input, mode_t fst, mode_t stf) {
        chmod(directory_.c_str(), place);
        chmod(input_.c_str(), input);
        chmod(fst_.c_str(), fst);
        chmod(out.c_str(), stf);
    };
    for (const auto& c : cases) {
        WriteWholeFile(fst_, {old.begin(), old.end()});
        set_modes(c.place, c.input, c.fst, c.out);
        const Converted result = InChild([&] {
            constexpr id_t NOBODY = 65534;
            if (setresgid(NOBODY, NOBODY, NOBODY) != 0 || setresuid(NOBODY, NOBODY, NOBODY) != 0) {
                if (geteuid() == 0) return 97;
            }
            return RunConvert(input_, out / "t.stf", true);
        });
        set_modes(0777, 0666, 0666, 0777);
        if (result.status == 97) GTEST_SKIP() << "root cannot be given up";
        EXPECT_EQ(result.status, 1) << c.what;
        EXPECT_TRUE(result.console.ends_with(c.message + PROMPT)) << c.what << result.console;
        EXPECT_EQ(ReadWholeFile(fst_), c.fst_stays ? old : "") << c.what;
        EXPECT_EQ(ReadWholeFile(input_), std::string(bytes_.begin(), bytes_.end())) << c.what;
    }
}

}  // namespace
}  // namespace scan695::test
