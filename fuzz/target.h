// What the fuzz targets share with the replay of their corpus: the entry that libFuzzer calls, and
// the way in which a target says that a promise is broken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace scan695::fuzz {

[[noreturn]] inline void Broken(const char* promise, const char* detail = "") {
    std::fprintf(stderr, "broken promise: %s %s\n", promise, detail);
    std::abort();
}

}  // namespace scan695::fuzz
