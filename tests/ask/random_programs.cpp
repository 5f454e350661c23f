// random_programs FOLDER COUNT: writes that many object files, 1.abs and so on.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "fuzz/random_program.h"

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    for (int i = 1; i <= std::atoi(argv[2]); ++i) {
        scan695::fuzz::Random random(static_cast<unsigned>(i));
        const auto bytes = Build(scan695::fuzz::RandomProgram(random));
        std::ofstream file(std::filesystem::path(argv[1]) / (std::to_string(i) + ".abs"),
                           std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
}
