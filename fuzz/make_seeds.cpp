// Writes the inputs that the corpus grows from: make_seeds DIRECTORY fills DIRECTORY/convert with
// object files (the samples, damaged files, random modules for each processor) and DIRECTORY/fst
// with the FST files of those that convert.
#include <cstdio>
#include <filesystem>
#include <string>

#include "fuzz/random_records.h"
#include "tests/faults/fatal_cases.h"
#include "tests/support/convert.h"

namespace fs = std::filesystem;
using namespace scan695::test;

namespace {

constexpr uint32_t RANDOM_FILES = 150;

// Every part gets a few records.
Bytes RandomFile(uint32_t seed) {
    using namespace scan695::fuzz;
    constexpr const char* PROCESSORS[] = {"80166", "tri", "296sa_e"};
    Random random(seed);
    const auto records = [&random](size_t part, uint32_t most) {
        Bytes bytes;
        for (uint32_t n = Below(random, most + 1); n > 0; --n)
            bytes += RandomRecords(random, part, 0x46);
        return bytes;
    };
    ObjectFile file = {.processor = PROCESSORS[seed % 3]};
    file.ad_extension =
        AdExtension(AdAttribute(kFormatVersion, 1, 2) + AdAttribute(kMemoryModel, seed % 8));
    file.environment =
        Environment(EnvAttribute(kDateTime, 1, 2) + EnvAttribute(kComment) + Text("c") +
                    EnvAttribute(kToolInfo, 1, 2, 3) + EnvAttribute(kHost, 1));
    file.segments = records(SEGMENTS, 4);
    file.external = records(EXTERNAL, 3);
    file.debug = RandomModules(random, 3);
    file.data = UseSegment(1) + records(DATA, 4);
    file.trailer = Trailer(seed);
    return Build(file);
}

class SeedWriter {
  public:
    explicit SeedWriter(const fs::path& directory) : directory_(directory) {
        fs::create_directories(directory / "convert");
        fs::create_directories(directory / "fst");
    }
    void Add(const Bytes& file) {
        const std::string name = std::to_string(written_++);
        WriteWholeFile(directory_ / "convert" / name, file);
        const Converted result = ConvertBytes(file, true);
        if (result.status == 0)
            WriteWholeFile(directory_ / "fst" / name, {result.fst.begin(), result.fst.end()});
    }

  private:
    fs::path directory_;
    int written_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_seeds DIRECTORY\n");
        return 2;
    }
    SeedWriter seeds(argv[1]);
    for (const char* sample : {"c166.abs", "296sa.abs", "tricore.abs"}) {
        const std::string bytes = ReadWholeFile(fs::path(SCAN695_SOURCE_DIR) / "samples" / sample);
        seeds.Add(Bytes({bytes.begin(), bytes.end()}));
    }
    for (const FatalCase& fault : FatalCases()) seeds.Add(Build(fault.File()));
    for (uint32_t seed = 1; seed <= RANDOM_FILES; ++seed) seeds.Add(RandomFile(seed));
    return 0;
}
