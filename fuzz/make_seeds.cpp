// Writes the inputs that the corpus grows from: make_seeds DIRECTORY fills DIRECTORY/convert with
// object files (the samples, damaged files) and DIRECTORY/fst with the FST files of those that
// convert.
#include <cstdio>
#include <filesystem>
#include <string>

#include "tests/faults/fatal_cases.h"
#include "tests/support/samples.h"

namespace fs = std::filesystem;
using namespace scan695::test;

namespace {

void Add(const fs::path& directory, const Bytes& file) {
    static int written = 0;
    const std::string name = std::to_string(written++);
    WriteWholeFile(directory / "convert" / name, file);
    const Converted result = ConvertBytes(file, true);
    if (result.status == 0)
        WriteWholeFile(directory / "fst" / name, {result.fst.begin(), result.fst.end()});
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_seeds DIRECTORY\n");
        return 2;
    }
    const fs::path directory = argv[1];
    for (const char* kind : {"convert", "fst"}) fs::create_directories(directory / kind);
    for (const char* sample : SAMPLES) Add(directory, Bytes(SampleBytes(sample)));
    for (const FatalCase& fault : FatalCases()) Add(directory, Build(fault.File()));
    return 0;
}
