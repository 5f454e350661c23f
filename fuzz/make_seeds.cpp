// Writes the inputs that the corpus grows from: make_seeds DIRECTORY FILE... fills
// DIRECTORY/convert with the object files given and programs made at random, and DIRECTORY/fst with
// the FST files of those that convert.
#include <cstdio>
#include <filesystem>
#include <string>

#include "fuzz/random_program.h"
#include "harness/convert.h"

namespace fs = std::filesystem;
using namespace scan695;

namespace {

constexpr uint32_t PROGRAMS = 200;

void Add(const fs::path& directory, const std::vector<uint8_t>& file) {
    static int written = 0;
    const std::string name = std::to_string(written++);
    harness::WriteWholeFile(directory / "convert" / name, file);
    const harness::Converted result = harness::ConvertBytes(file, true);
    if (result.status == 0)
        harness::WriteWholeFile(directory / "fst" / name, {result.fst.begin(), result.fst.end()});
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: make_seeds DIRECTORY FILE...\n");
        return 2;
    }
    const fs::path directory = argv[1];
    for (const char* kind : {"convert", "fst"}) fs::create_directories(directory / kind);
    for (int i = 2; i < argc; ++i) {
        const std::string bytes = harness::ReadWholeFile(argv[i]);
        Add(directory, {bytes.begin(), bytes.end()});
    }
    for (uint32_t seed = 0; seed < PROGRAMS; ++seed) {
        fuzz::Random random(seed);
        Add(directory, Build(fuzz::RandomProgram(random)));
    }
    return 0;
}
