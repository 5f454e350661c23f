#include "harness/convert.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "base/text_case.h"
#include "include/scan695.h"

#if defined(SCAN695_COVERAGE)
extern "C" void __gcov_dump();  // NOLINT(bugprone-reserved-identifier): the compiler's name
static void SaveCounters() {
    __gcov_dump();
}
#else
static void SaveCounters() {}
#endif

namespace scan695::harness {

namespace fs = std::filesystem;

namespace {

// The directory of this process, removed with all that lies in it.
struct ProcessDirectory {
    fs::path path;
    int made = 0;
    pid_t owner = getpid();
    ProcessDirectory() {
        const fs::path memory = "/dev/shm";  // thousands of small files: kept off the disk
        const fs::path base = fs::is_directory(memory) ? memory : fs::temp_directory_path();
        std::string name = base / "scan695-test-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) std::abort();
        path = name;
    }
    ~ProcessDirectory() {
        std::error_code ignored;
        if (owner == getpid()) fs::remove_all(path, ignored);
    }
};

}  // namespace

fs::path ScratchDirectory() {
    static ProcessDirectory directory;
    fs::path path = directory.path / std::to_string(directory.made++);
    fs::create_directory(path);
    return path;
}

std::string ReadWholeFile(const fs::path& path) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) return {};
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteWholeFile(const fs::path& path, const std::vector<uint8_t>& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

fs::path FstFileOf(const fs::path& input) {
    std::string base = input.stem();
    UpperCaseInPlace(base.data());
    return input.parent_path() / (base + ".FST");
}

Converted InChild(const std::function<int()>& run) {
    const fs::path console = ScratchDirectory() / "console";
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        const int in = open("/dev/null", O_RDONLY);
        const int out = open(console.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (in < 0 || out < 0 || dup2(in, 0) < 0 || dup2(out, 1) < 0) std::_Exit(99);
        const int status = run();
        std::fflush(stdout);
        SaveCounters();
        std::_Exit(status);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) return {};
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
            ReadWholeFile(console), "", ""};
}

Converted ConvertFile(const fs::path& input, const fs::path& stf, bool debug) {
    Converted result = InChild(
        [&] { return Convert(0, input.c_str(), stf.c_str(), debug ? 1 : 0) == nullptr ? 0 : 98; });
    result.stf = ReadWholeFile(stf);
    result.fst = ReadWholeFile(FstFileOf(input));
    return result;
}

Converted ConvertBytes(const std::vector<uint8_t>& bytes, bool debug) {
    const fs::path directory = ScratchDirectory();
    WriteWholeFile(directory / "t.abs", bytes);
    return ConvertFile(directory / "t.abs", directory / "t.stf", debug);
}

std::string UnixLines(const std::string& text) {
    std::string lines;
    for (const char c : text)
        if (c != '\r') lines += c;
    return lines;
}

}  // namespace scan695::harness
