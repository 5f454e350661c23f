// slow SEED COUNT FOLDER [FILE...]: looks for inputs that cost more than their length allows. Each
// trial takes a program (one made at random, or one of the FILEs), grows it by records that come
// again and again, some numbers in them the same, some counted up, some scattered, and converts it
// at n and at 2n copies in both modes. Twice the copies may cost at most 2.8 times the processor
// time, unless the output grew as much; a case above that is measured again, reported, and kept in
// FOLDER. Status 1 when there was one.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
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

#include "fuzz/object_parts.h"
#include "fuzz/random_program.h"
#include "include/scan695.h"

namespace scan695::fuzz {
namespace {

namespace fs = std::filesystem;
using builder::Bytes;
using builder::ObjectFile;

constexpr size_t LARGEST = 600000;   // bytes of a grown part
constexpr double MEASURABLE = 0.04;  // seconds; shorter runs say nothing
constexpr double RATIO_LIMIT = 2.8;
constexpr rlim_t SECONDS_A_RUN = 60;

struct Cost {
    double seconds = 0;
    double output = 1;  // bytes of STF, FST and console
};

// A number of the record in one of its copies.
uint32_t Changed(uint32_t value, uint32_t copy, uint32_t kind) {
    switch (kind) {
        case 1:
            return value + copy;
        case 2:
            return value + copy * 0x9E3779B1U;
        case 3:
            return value - copy;
        case 4:
            return value + copy * 16;
        default:
            return value;
    }
}

// A run of records with, for each of its numbers, how it changes.
struct Run {
    std::vector<Record> records;
    std::vector<uint32_t> kinds;
};

Run ChooseRun(Random& random, const std::vector<Record>& records) {
    const size_t length = std::min<size_t>(1 + Below(random, 5), records.size());
    const size_t first = Below(random, records.size() - length + 1);
    Run run;
    run.records.assign(records.begin() + static_cast<ptrdiff_t>(first),
                       records.begin() + static_cast<ptrdiff_t>(first + length));
    // Numbers that were equal change alike: they bind records together.
    const uint32_t salt = Below(random, 1U << 30);
    for (const Record& record : run.records)
        for (const NumberField& field : NumbersOf(record)) {
            const uint32_t mixed = (field.value + salt) * 0x9E3779B1U >> 28;
            run.kinds.push_back(mixed < 10 ? 0 : mixed % 5);
        }
    return run;
}

void AppendCopy(Bytes& out, const Run& run, uint32_t copy) {
    size_t kind = 0;
    for (const Record& record : run.records) {
        size_t done = 0;
        for (const NumberField& field : NumbersOf(record)) {
            out.Append(record.data() + done, field.offset - done);
            done = field.offset + field.size;
            const uint32_t how = run.kinds[kind++];
            if (how == 0)
                out.Append(record.data() + field.offset, field.size);
            else
                out += Bytes(builder::Num(Changed(field.value, copy, how)));
        }
        out.Append(record.data() + done, record.size() - done);
    }
}

// One part of a program with a place where copies of up to two runs go.
struct Growth {
    ObjectFile file;
    size_t part = 0;
    Bytes before;
    Bytes behind;
    std::vector<Run> runs;
    bool interleaved = false;

    Bytes At(uint32_t copies) const {
        ObjectFile grown = file;
        Bytes bytes = before;
        if (interleaved)
            for (uint32_t i = 0; i < copies; ++i)
                for (const Run& run : runs) AppendCopy(bytes, run, i);
        else
            for (const Run& run : runs)
                for (uint32_t i = 0; i < copies; ++i) AppendCopy(bytes, run, i);
        grown.*builder::PARTS[part] = bytes + behind;
        return Build(grown);
    }
};

bool Choose(Random& random, const Bytes& program, Growth& growth) {
    if (!Split(program.data(), program.size(), growth.file)) return false;
    static constexpr size_t GROWN_PARTS[] = {4, 4, 4, 4, 3, 5};
    growth.part = GROWN_PARTS[Below(random, std::size(GROWN_PARTS))];
    const std::vector<Record> records = SplitRecords(growth.file.*builder::PARTS[growth.part]);
    if (records.empty()) return false;
    const size_t place = Below(random, records.size());
    for (size_t i = 0; i < records.size(); ++i)
        (i < place ? growth.before : growth.behind).Append(records[i].data(), records[i].size());
    const size_t nof_runs = 1 + Below(random, 2);
    for (size_t i = 0; i < nof_runs; ++i) growth.runs.push_back(ChooseRun(random, records));
    growth.interleaved = Below(random, 2) == 0;
    return true;
}

class Workshop {
  public:
    explicit Workshop(fs::path folder) : folder_(std::move(folder)) {
        fs::create_directories(folder_);
    }

    Cost Convert(const Bytes& bytes, bool debug) const {
        Keep(bytes, "slow.abs");
        for (const char* name : {"slow.stf", "SLOW.FST"}) fs::remove(folder_ / name);
        const pid_t child = fork();
        if (child == 0) ConvertAndExit(debug);
        int status = 0;
        rusage usage = {};
        wait4(child, &status, 0, &usage);
        Cost cost;
        cost.seconds = static_cast<double>(usage.ru_utime.tv_sec) +
                       static_cast<double>(usage.ru_utime.tv_usec) * 1e-6;
        for (const char* name : {"slow.stf", "SLOW.FST", "console"}) {
            std::error_code none;
            const auto size = fs::file_size(folder_ / name, none);
            if (!none) cost.output += static_cast<double>(size);
        }
        return cost;
    }

    void Keep(const Bytes& bytes, const std::string& name) const {
        std::ofstream file(folder_ / name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }

  private:
    [[noreturn]] void ConvertAndExit(bool debug) const {
        const rlimit limit = {SECONDS_A_RUN, SECONDS_A_RUN};
        setrlimit(RLIMIT_CPU, &limit);
        if (std::freopen("/dev/null", "r", stdin) == nullptr) std::_Exit(2);
        if (std::freopen((folder_ / "console").c_str(), "w", stdout) == nullptr) std::_Exit(2);
        ::Convert(0, (folder_ / "slow.abs").c_str(), (folder_ / "slow.stf").c_str(), debug ? 1 : 0);
        std::exit(0);
    }

    fs::path folder_;
};

// The growth of the cost beyond that of the output.
double Excess(const Cost& one, const Cost& two) {
    const double output = std::max(1.0, two.output / one.output / 2);
    return two.seconds / std::max(one.seconds, MEASURABLE / 4) / output;
}

// The best of several measurements: others may be at work on the machine.
double Ratio(const Workshop& workshop, const Bytes& one, const Bytes& two, bool debug, int runs) {
    double least = 1e9;
    for (int i = 0; i < runs; ++i) {
        const Cost half = workshop.Convert(one, debug);
        const Cost whole = workshop.Convert(two, debug);
        if (whole.seconds < MEASURABLE) return 0;
        least = std::min(least, Excess(half, whole));
        if (least <= RATIO_LIMIT) break;
    }
    return least;
}

// Gives false for a program that costs too much.
bool Try(const Workshop& workshop, uint32_t seed, const Bytes& program) {
    Random random(seed);
    Growth growth;
    if (!Choose(random, program, growth)) return true;
    const size_t step = std::max<size_t>(growth.At(64).size() - growth.At(0).size(), 64) / 64;
    const auto copies = static_cast<uint32_t>(std::min<size_t>(LARGEST / step / 2, 20000));
    const Bytes one = growth.At(copies);
    const Bytes two = growth.At(2 * copies);
    if (RepeatsTooMuch(two.data(), two.size())) return true;
    bool good = true;
    for (const bool debug : {false, true}) {
        const double ratio = Ratio(workshop, one, two, debug, 4);
        if (ratio <= RATIO_LIMIT) continue;
        std::printf("seed %u%s: %zu bytes, ratio %.1f\n", seed, debug ? " debug" : "", two.size(),
                    ratio);
        std::fflush(stdout);
        workshop.Keep(two, "seed-" + std::to_string(seed) + (debug ? "-debug" : "") + ".abs");
        good = false;
    }
    return good;
}

Bytes ReadFile(const char* path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return Bytes(std::vector<uint8_t>(text.begin(), text.end()));
}

}  // namespace
}  // namespace scan695::fuzz

int main(int argc, char** argv) {
    using namespace scan695::fuzz;
    if (argc < 4) return std::fprintf(stderr, "usage: slow SEED COUNT FOLDER [FILE...]\n"), 2;
    const Workshop workshop{argv[3]};
    const auto first = static_cast<uint32_t>(std::strtoul(argv[1], nullptr, 0));
    const auto count = static_cast<uint32_t>(std::strtoul(argv[2], nullptr, 0));
    uint32_t slow = 0;
    for (uint32_t seed = first; seed < first + count; ++seed) {
        const auto nof_files = static_cast<uint32_t>(argc - 4);
        const bool from_file = nof_files != 0 && seed % 2 == 0;
        Random random(seed);
        const Bytes program =
            from_file ? ReadFile(argv[4 + seed / 2 % nof_files]) : Build(RandomProgram(random));
        slow += Try(workshop, seed, program) ? 0 : 1;
    }
    std::printf("%u trials, %u too slow\n", count, slow);
    return slow == 0 ? 0 : 1;
}
