// Measures how the time and memory of a conversion grow with the size of the program: each kind of
// program is converted at one size and at twice that size, each several times in a process of its
// own, and the best times are compared. Prints a table; the exit status is 1 when a ratio is above
// its limit. The code image is compared with a plain copy of the STF file that it gives.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "bench/measure.h"
#include "bench/programs.h"

namespace scan695::bench {
namespace {

namespace fs = std::filesystem;

constexpr int RUNS = 9;

struct Case {
    const char* name;
    std::function<builder::Bytes(uint32_t)> make;
    uint32_t size;  // of the larger program
    bool debug;
    double limit;  // of the ratio of times
};

class Bench {
  public:
    explicit Bench(fs::path directory) : directory_(std::move(directory)) {}

    bool RunCase(const Case& c) {
        const Cost half = ConvertProgram(c, c.size / 2);
        const Cost whole = ConvertProgram(c, c.size);
        const double ratio = whole.wall_seconds / half.wall_seconds;
        std::printf("%-28s %9u %5s %8.3f s %8.3f s  ratio %.2f (at most %.1f)  %6.0f MB\n", c.name,
                    c.size, c.debug ? "debug" : "", half.wall_seconds, whole.wall_seconds, ratio,
                    c.limit, whole.megabytes);
        std::fflush(stdout);
        return ratio <= c.limit;
    }

    bool RunCodeImage(uint32_t size) {
        const Case code = {"code image", CodeProgram, size, false, 0};
        const Cost convert = ConvertProgram(code, size);
        const fs::path copy = directory_ / "copy";
        const std::string command = "cat " + stf_.string() + " > " + copy.string();
        const Cost floor =
            Measure(RUNS, [&] { std::_Exit(std::system(command.c_str()) == 0 ? 0 : 1); });
        const double ratio = convert.wall_seconds / floor.wall_seconds;
        const double image = static_cast<double>(size) / (1 << 20);
        std::printf(
            "code image of %.0f MB: %.3f s, copy of the STF file %.3f s, ratio %.2f (at most "
            "4.0); memory %.0f MB, %.2f times the image (at most 4.0)\n",
            image, convert.wall_seconds, floor.wall_seconds, ratio, convert.megabytes,
            convert.megabytes / image);
        return ratio <= 4 && convert.megabytes <= 4 * image;
    }

  private:
    Cost ConvertProgram(const Case& c, uint32_t size) {
        {
            const builder::Bytes bytes = c.make(size);
            std::ofstream file(input_, std::ios::binary);
            file.write(reinterpret_cast<const char*>(bytes.data()),
                       static_cast<std::streamsize>(bytes.size()));
        }
        return Measure(RUNS, [&] { ConvertAndExit(input_, stf_, c.debug); });
    }

    fs::path directory_;
    fs::path input_ = directory_ / "bench.abs";
    fs::path stf_ = directory_ / "bench.stf";
};

const Case CASES[] = {
    {"types, blocks of 1,000", [](uint32_t n) { return TypesProgram(n, 1000); }, 200000, false,
     2.3},
    {"types, blocks of 1,000", [](uint32_t n) { return TypesProgram(n, 1000); }, 200000, true, 2.3},
    {"types, one block", [](uint32_t n) { return TypesProgram(n, n); }, 40000, false, 2.3},
    {"types, one block", [](uint32_t n) { return TypesProgram(n, n); }, 40000, true, 2.3},
    {"global and public symbols", SymbolsProgram, 200000, false, 2.3},
    {"global and public symbols", SymbolsProgram, 200000, true, 2.4},
    {"assembler symbols", AsmSymbolsProgram, 20000, false, 2.3},
    {"stack adjust points", StackPointsProgram, 20000, false, 2.3},
    {"lines", [](uint32_t n) { return LinesProgram(n, false); }, 400000, true, 2.4},
    {"lines of mixed modules", [](uint32_t n) { return LinesProgram(n, true); }, 400000, true, 2.4},
    {"interleaved blocks", BlocksProgram, 50000, true, 2.4},
};

}  // namespace
}  // namespace scan695::bench

int main() {
    namespace fs = std::filesystem;
    std::string name = fs::temp_directory_path() / "scan695-bench-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) return 2;
    scan695::bench::Bench bench(name);
    bool good = bench.RunCodeImage(64U << 20);
    for (const auto& c : scan695::bench::CASES) good &= bench.RunCase(c);
    fs::remove_all(name);
    return good ? 0 : 1;
}
