#include "cli/child.h"

#include <cstdio>

#include "scan695.h"

namespace scan695::cli {

int ConvertHere(const ChildTask& task) {
    std::setvbuf(stdout, nullptr, _IOFBF, size_t{64} * 1024);
    const char* error = Convert(0, task.input.c_str(), task.stf.c_str(), task.debug ? 1 : 0);
    if (error != nullptr) std::printf("%s\n", error);
    return error == nullptr && std::fflush(stdout) == 0 ? 0 : 1;
}

}  // namespace scan695::cli
