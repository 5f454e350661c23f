// Writes the sample object files to the directory given: make_samples DIRECTORY.
#include <cstdio>
#include <exception>
#include <fstream>
#include <string>

#include "samples/programs.h"

namespace {

using scan695::samples::Bytes;

bool Write(const std::string& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) std::fprintf(stderr, "make_samples: cannot write %s\n", path.c_str());
    return file.good();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_samples DIRECTORY\n");
        return 2;
    }
    const std::string directory = std::string(argv[1]) + "/";
    try {
        const bool good = Write(directory + "c166.abs", scan695::samples::DosingPump()) &&
                          Write(directory + "296sa.abs", scan695::samples::InjectionTimer()) &&
                          Write(directory + "tricore.abs", scan695::samples::EngineControl());
        return good ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make_samples: %s\n", error.what());
        return 1;
    }
}
