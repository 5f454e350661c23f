// Runs a target over kept inputs without libFuzzer, with any compiler: replay FILE-OR-DIRECTORY...
// Prints the name of each input before it runs, so that the last line names the one that failed.
#include <algorithm>
#include <filesystem>
#include <vector>

#include "fuzz/target.h"
#include "harness/convert.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) {
    std::vector<fs::path> inputs;
    for (int i = 1; i < argc; ++i) {
        if (!fs::is_directory(argv[i]))
            inputs.emplace_back(argv[i]);
        else
            for (const auto& entry : fs::directory_iterator(argv[i]))
                inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
    for (const fs::path& input : inputs) {
        std::fprintf(stderr, "%s\n", input.c_str());
        const std::string bytes = scan695::harness::ReadWholeFile(input);
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    if (inputs.empty()) std::fprintf(stderr, "replay: no inputs\n");
    return inputs.empty() ? 1 : 0;
}
