// Converts many object files with two builds of the library and compares what comes out, byte by
// byte: exit status, the answer of Check, console, STF file, FST file.
//
//     differ OLD.so NEW.so [FIRST COUNT [PATH...]]
//
// Each number from FIRST on is the seed of one file: a program made at random, one of the PATHs
// (files, or directories of them) as it is, or one of either after a few mutations of its records
// or its bytes. Without numbers the PATHs alone are converted, each as it is. Every file goes
// through both libraries without and with DebugMode, some both ways in one process, so that state
// that reaches the next run shows.
//
// Each library lives in a process of its own and converts each file in a child of that, since a
// fatal condition ends the process; a child that takes more than ten seconds ends by SIGALRM, and
// that counts as its status. Both work in directories of their own under the same names.
//
// The first files that differ are told with their seed or name, with the first bytes that differ,
// and kept as differ-SEED.abs in the working directory. The last line counts; the exit status is 1
// if anything differed, 2 if nothing could be compared.
//
//     differ --write SEED FILE [PATH...]     the file of one seed
//
// To compare a change with the state before it, build both libraries:
//
//     git worktree add /tmp/old main && cd /tmp/old && cmake --preset release
//     cmake --build --preset release --target scan695
//     build/release/fuzz/differ /tmp/old/build/release/libscan695.so build/release/libscan695.so
//         1 20000 fuzz/corpus/convert samples
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/mutations.h"
#include "fuzz/object_parts.h"
#include "fuzz/random_program.h"

namespace fs = std::filesystem;

namespace scan695::fuzz {
namespace {

using builder::ObjectFile;

constexpr unsigned SECONDS_FOR_A_FILE = 10;
constexpr int FILES_TO_TELL = 5;
constexpr uint32_t HUGE = 1U << 30;  // bytes that a conversion may take

enum Mode : char { PLAIN = 'p', DEBUG = 'd', BOTH = 'b' };
constexpr const char* OUTPUTS[] = {"console", "t.stf", "T.FST"};

std::vector<uint8_t> ReadWhole(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteWhole(const fs::path& path, const std::vector<uint8_t>& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "differ: %s\n", what.c_str());
    std::exit(2);
}

// ---- One library in a process of its own -----------------------------------------------------

struct Results {
    int status = 0;
    std::vector<uint8_t> outputs[std::size(OUTPUTS)];
};

class Server {
  public:
    Server(const char* library, const fs::path& directory);
    ~Server();
    void Start(const std::vector<uint8_t>& input, Mode mode);
    Results Finish();

  private:
    [[noreturn]] static void Serve(const char* library, int requests, int answers);

    fs::path directory_;
    int requests_ = -1;
    int answers_ = -1;
    pid_t process_ = -1;
};

using CheckFunction = uint32_t (*)(uint32_t, const char*);
using ConvertFunction = const char* (*)(uint32_t, const char*, const char*, uint32_t);

[[noreturn]] void RunChild(CheckFunction check, ConvertFunction convert, char mode) {
    const int in = open("/dev/null", O_RDONLY);
    const int out = open("console", O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (dup2(in, 0) < 0 || dup2(out, 1) < 0) _exit(97);
    alarm(SECONDS_FOR_A_FILE);
    std::printf("Check: %u\n", check(0, "t.abs"));
    const char* result = nullptr;
    if (mode != DEBUG) result = convert(0, "t.abs", "t.stf", 0);
    if (mode != PLAIN) result = convert(0, "t.abs", "t.stf", 1);
    std::exit(result == nullptr ? 0 : 98);
}

void Server::Serve(const char* library, int requests, int answers) {
    void* const handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) Fail(dlerror());
    const auto check = reinterpret_cast<CheckFunction>(dlsym(handle, "Check"));
    const auto convert = reinterpret_cast<ConvertFunction>(dlsym(handle, "Convert"));
    if (check == nullptr || convert == nullptr) Fail(std::string(library) + ": no Convert");
    const rlimit limit = {HUGE, HUGE};
    setrlimit(RLIMIT_FSIZE, &limit);
    char mode;
    while (read(requests, &mode, 1) == 1) {
        for (const char* output : OUTPUTS) unlink(output);
        const pid_t child = fork();
        if (child == 0) RunChild(check, convert, mode);
        int status = 0;
        if (child < 0 || waitpid(child, &status, 0) != child) Fail("no child");
        if (write(answers, &status, sizeof status) != sizeof status) break;
    }
    _exit(0);
}

Server::Server(const char* library, const fs::path& directory) : directory_(directory) {
    const std::string path = fs::absolute(library);
    fs::create_directory(directory);
    int requests[2];
    int answers[2];
    if (pipe2(requests, O_CLOEXEC) != 0 || pipe2(answers, O_CLOEXEC) != 0) Fail("no pipe");
    process_ = fork();
    if (process_ == 0) {
        close(requests[1]);
        fs::current_path(directory);
        Serve(path.c_str(), requests[0], answers[1]);
    }
    close(requests[0]);
    close(answers[1]);
    requests_ = requests[1];
    answers_ = answers[0];
}

Server::~Server() {
    close(requests_);
    close(answers_);
    waitpid(process_, nullptr, 0);
}

void Server::Start(const std::vector<uint8_t>& input, Mode mode) {
    WriteWhole(directory_ / "t.abs", input);
    if (write(requests_, &mode, 1) != 1) Fail("a library's process has ended");
}

Results Server::Finish() {
    Results results;
    if (read(answers_, &results.status, sizeof results.status) != sizeof results.status)
        Fail("a library's process has ended");
    for (size_t i = 0; i < std::size(OUTPUTS); ++i)
        results.outputs[i] = ReadWhole(directory_ / OUTPUTS[i]);
    return results;
}

// ---- The files -------------------------------------------------------------------------------

std::vector<fs::path> FilesOf(char** begin, char** end) {
    std::vector<fs::path> files;
    for (; begin != end; ++begin) {
        if (!fs::is_directory(*begin)) files.emplace_back(*begin);
        if (!fs::is_directory(*begin)) continue;
        for (const auto& entry : fs::directory_iterator(*begin))
            if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Damages a stretch of bytes: other ones, more, fewer.
size_t ChangeBytes(Random& random, uint8_t* data, size_t size, size_t max_size) {
    if (size == 0) return 0;
    const size_t at = Below(random, size);
    switch (Below(random, 5)) {
        case 0:
            data[at] ^= static_cast<uint8_t>(1U << Below(random, 8));
            return size;
        case 1:
            data[at] = static_cast<uint8_t>(Below(random, 256));
            return size;
        case 2:
            data[at] = static_cast<uint8_t>(data[at] + (Below(random, 2) == 0 ? 1 : 255));
            return size;
        case 3:
            std::copy(data + at + 1, data + size, data + at);
            return size - 1;
        default:
            if (size == max_size) return size;
            std::copy_backward(data + at, data + size, data + size + 1);
            return size + 1;
    }
}

std::vector<uint8_t> Damaged(Random& random, std::vector<uint8_t> bytes) {
    for (uint32_t n = 1 + Below(random, 3); n > 0 && !bytes.empty(); --n) {
        if (Below(random, 6) == 0) bytes.resize(Below(random, bytes.size()));
        const size_t size = bytes.size();
        bytes.resize(size + 1);
        bytes.resize(ChangeBytes(random, bytes.data(), size, size + 1));
    }
    return bytes;
}

std::vector<uint8_t> Mutated(Random& random, const std::vector<uint8_t>& bytes) {
    ObjectFile file;
    ObjectFile other;
    if (!Split(bytes.data(), bytes.size(), file)) return Damaged(random, bytes);
    if (Below(random, 8) == 0) MixIn(random, file, RandomProgram(random));
    for (uint32_t n = 1 + Below(random, 4); n > 0; --n)
        Mutate(random, file, [&](uint8_t* data, size_t size, size_t max_size) {
            return ChangeBytes(random, data, size, max_size);
        });
    return Build(file);
}

std::vector<uint8_t> FileOf(uint32_t seed, const std::vector<fs::path>& files) {
    Random random(seed);
    random.discard(10);  // seeds that are neighbours begin alike
    const bool given = !files.empty() && Below(random, 3) == 0;
    const std::vector<uint8_t> bytes = given ? ReadWhole(files[Below(random, files.size())])
                                             : Build(RandomProgram(random)).vector();
    switch (Below(random, 8)) {
        case 0:
            return Damaged(random, bytes);
        case 1:
        case 2:
        case 3:
            return Mutated(random, bytes);
        default:
            return bytes;
    }
}

// ---- The comparison --------------------------------------------------------------------------

// What stands around a place, for reading.
std::string Around(const std::vector<uint8_t>& bytes, size_t place) {
    std::string text;
    for (size_t i = place - std::min<size_t>(place, 24); i < std::min(bytes.size(), place + 24);
         ++i) {
        char hex[8];
        std::snprintf(hex, sizeof hex, "<%02X>", bytes[i]);
        const bool plain = bytes[i] >= ' ' && bytes[i] < 0x7F;
        text += plain ? std::string(1, static_cast<char>(bytes[i])) : hex;
    }
    return text;
}

class Comparison {
  public:
    Comparison(const char* old_library, const char* new_library, const fs::path& directory)
        : old_(old_library, directory / "old"), new_(new_library, directory / "new") {}
    void Compare(const std::string& name, const std::vector<uint8_t>& input, Mode mode);
    int Conclusion() const;

  private:
    bool Same(const std::string& name, Mode mode, const Results& before, const Results& after);

    Server old_;
    Server new_;
    int files_ = 0;
    int runs_ = 0;
    int complete_ = 0;
    int differing_ = 0;
};

bool Comparison::Same(const std::string& name, Mode mode, const Results& before,
                      const Results& after) {
    const bool tell = differing_ < FILES_TO_TELL;
    bool same = before.status == after.status;
    if (!same && tell)
        std::printf("%s (%c): wait status %#x and %#x\n", name.c_str(), mode,
                    static_cast<unsigned>(before.status), static_cast<unsigned>(after.status));
    for (size_t i = 0; i < std::size(OUTPUTS); ++i) {
        const auto& a = before.outputs[i];
        const auto& b = after.outputs[i];
        if (a == b) continue;
        same = false;
        if (!tell) continue;
        const auto [at, unused] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
        const auto place = static_cast<size_t>(at - a.begin());
        std::printf("%s (%c): %s differs at byte %zu of %zu and %zu\n  %s\n  %s\n", name.c_str(),
                    mode, OUTPUTS[i], place, a.size(), b.size(), Around(a, place).c_str(),
                    Around(b, place).c_str());
    }
    return same;
}

void Comparison::Compare(const std::string& name, const std::vector<uint8_t>& input, Mode both) {
    if (RepeatsTooMuch(input.data(), input.size())) return;
    ++files_;
    bool same = true;
    for (const Mode mode : {PLAIN, both}) {
        old_.Start(input, mode);
        new_.Start(input, mode);
        const Results before = old_.Finish();
        const Results after = new_.Finish();
        ++runs_;
        complete_ += before.status == 0 ? 1 : 0;
        same = Same(name, mode, before, after) && same;
    }
    if (same) return;
    if (differing_++ < FILES_TO_TELL)
        WriteWhole("differ-" + fs::path(name).filename().string() + ".abs", input);
    std::fflush(stdout);
}

int Comparison::Conclusion() const {
    std::printf("%d files, %d runs, %d of them up to the end; %d files differ\n", files_, runs_,
                complete_, differing_);
    if (files_ == 0) return 2;
    return differing_ == 0 ? 0 : 1;
}

// The directory that both libraries work in, off the disk where that can be.
struct Workshop {
    fs::path path;
    Workshop() {
        std::string name = fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path();
        name += "/differ-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) Fail("no directory to work in");
        path = name;
    }
    ~Workshop() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
};

uint32_t Number(const char* text) {
    return static_cast<uint32_t>(std::strtoul(text, nullptr, 10));
}

int Main(int argc, char** argv) {
    if (argc >= 4 && std::string(argv[1]) == "--write") {
        WriteWhole(argv[3], FileOf(Number(argv[2]), FilesOf(argv + 4, argv + argc)));
        return 0;
    }
    const bool seeds = argc >= 5 && Number(argv[3]) + Number(argv[4]) != 0;
    if (argc < 4) Fail("usage: differ OLD.so NEW.so [FIRST COUNT] [PATH...]");
    const std::vector<fs::path> files = FilesOf(argv + (seeds ? 5 : 3), argv + argc);
    const Workshop workshop;
    Comparison comparison(argv[1], argv[2], workshop.path);
    if (!seeds)
        for (const fs::path& file : files) comparison.Compare(file, ReadWhole(file), DEBUG);
    for (uint32_t n = 0; seeds && n < Number(argv[4]); ++n) {
        const uint32_t seed = Number(argv[3]) + n;
        comparison.Compare(std::to_string(seed), FileOf(seed, files), n % 4 == 0 ? BOTH : DEBUG);
    }
    return comparison.Conclusion();
}

}  // namespace
}  // namespace scan695::fuzz

int main(int argc, char** argv) {
    return scan695::fuzz::Main(argc, argv);
}
