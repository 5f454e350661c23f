// hostile [NAME...]: times the inputs that are made to be slow, or those whose name contains one of
// the arguments, at n / 4, n / 2 and n, and prints a table. The exit status is 1 when twice the
// size costs more than 2.4 times the processor time, or when an input of 1 MB needs more than 2
// seconds.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "ask/diff.h"
#include "ask/find.h"
#include "ask/layouts.h"
#include "bench/hostile/hostile.h"
#include "bench/measure.h"
#include "inspector/verify.h"

namespace scan695::bench {
namespace {

namespace fs = std::filesystem;

constexpr int RUNS = 5;
constexpr double RATIO_LIMIT = 2.4;
constexpr double SECONDS_A_MEGABYTE = 2.0;
constexpr double MEASURABLE = 0.02;  // seconds; a ratio of shorter runs says nothing

// Verifies an FST file, asks for an address and a name, looks at all layouts, and compares it with
// a copy whose last byte is another.
[[noreturn]] void InspectAndExit(const fs::path& file) {
    inspector::Fst fst;
    inspector::Fst other;
    std::string error;
    if (!inspector::Load(file.string(), fst, error)) std::_Exit(1);
    std::vector<uint8_t> changed(fst.bytes.begin(), fst.bytes.end());
    if (!changed.empty()) changed.back() ^= 1;
    if (!inspector::Parse(changed, other, error)) std::_Exit(1);
    std::ofstream nowhere("/dev/null");
    ask::Finder finder(fst);
    for (const char* text : {"0x10", "none", "n*e"}) finder.Print(ask::ParseQuery(text), nowhere);
    inspector::Verify(fst);
    ask::AllLayouts(fst);
    ask::Compare(fst, other);
    std::_Exit(0);
}

class Workshop {
  public:
    explicit Workshop(fs::path directory) : directory_(std::move(directory)) {}

    // Gives false when a limit is passed.
    bool Run(const HostileCase& c) {
        double seconds[3];
        double megabytes = 0;
        for (int i = 0; i < 3; ++i) {
            megabytes = Write(c.generate(c.size >> (2 - i)));
            seconds[i] = Measure(RUNS, [&] { Work(c); }).seconds;
        }
        const double ratio = Ratio(seconds);
        const bool good =
            ratio <= RATIO_LIMIT && seconds[2] <= SECONDS_A_MEGABYTE * std::max(megabytes, 1.0);
        std::printf("| %-44s | %-5s | %5.2f MB | %.3f s | %.3f s | %.3f s | %.2f |%s\n", c.name,
                    c.debug ? "debug" : "", megabytes, seconds[0], seconds[1], seconds[2], ratio,
                    good ? "" : " too slow");
        std::fflush(stdout);
        return good;
    }

  private:
    // The larger one of both doublings; of the second alone where the first is too short to
    // measure.
    static double Ratio(const double (&seconds)[3]) {
        const double second = seconds[2] / std::max(seconds[1], MEASURABLE / 2);
        const double first = seconds[1] / std::max(seconds[0], MEASURABLE / 2);
        return seconds[1] < MEASURABLE ? second : std::max(first, second);
    }

    void Work(const HostileCase& c) const {
        if (c.is_fst) InspectAndExit(input_);
        ConvertAndExit(input_, stf_, c.debug, c.may_stop);
    }

    // Gives the size in MB.
    double Write(const builder::Bytes& bytes) const {
        std::ofstream file(input_, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return static_cast<double>(bytes.size()) / 1e6;
    }

    fs::path directory_;
    fs::path input_ = directory_ / "hostile.abs";
    fs::path stf_ = directory_ / "hostile.stf";
};

bool IsWanted(const HostileCase& c, const std::vector<std::string_view>& names) {
    const std::string_view name = c.name;
    return names.empty() || std::any_of(names.begin(), names.end(), [name](std::string_view part) {
               return name.find(part) != std::string_view::npos;
           });
}

}  // namespace
}  // namespace scan695::bench

int main(int argc, char** argv) {
    using namespace scan695::bench;
    std::string directory = fs::temp_directory_path() / "scan695-hostile-XXXXXX";
    if (mkdtemp(directory.data()) == nullptr) return 2;
    Workshop workshop(directory);
    std::printf("| Input | | Size | n / 4 | n / 2 | n | Ratio |\n|---|---|---|---|---|---|---|\n");
    bool good = true;
    for (const auto cases : {HostileTypes(), HostileScopes(), HostileTables(), HostileFst()})
        for (const HostileCase& c : cases)
            if (IsWanted(c, {argv + 1, argv + argc})) good &= workshop.Run(c);
    fs::remove_all(directory);
    return good ? 0 : 1;
}
