// The mutations that libFuzzer applies to object files.
#include <cstring>

#include "fuzz/mutations.h"
#include "fuzz/object_parts.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t max_size);

namespace {

// Puts the file where libFuzzer wants it; a file that has become too large is given up.
size_t Deliver(const scan695::builder::Bytes& file, uint8_t* data, size_t max_size) {
    if (file.size() > max_size) return 0;
    std::memcpy(data, file.data(), file.size());
    return file.size();
}

}  // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t max_size,
                                          unsigned seed) {
    using namespace scan695::fuzz;
    Random random(seed);
    scan695::builder::ObjectFile file;
    if (Below(random, 25) == 0 || !Split(data, size, file))
        return LLVMFuzzerMutate(data, size, max_size);
    Mutate(random, file, LLVMFuzzerMutate);
    const size_t delivered = Deliver(Build(file), data, max_size);
    return delivered != 0 ? delivered : LLVMFuzzerMutate(data, size, max_size);
}

extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t* data1, size_t size1,
                                            const uint8_t* data2, size_t size2, uint8_t* out,
                                            size_t max_out_size, unsigned seed) {
    using namespace scan695::fuzz;
    Random random(seed);
    scan695::builder::ObjectFile file;
    scan695::builder::ObjectFile other;
    if (!Split(data1, size1, file) || !Split(data2, size2, other)) return 0;
    return MixIn(random, file, other) ? Deliver(Build(file), out, max_out_size) : 0;
}
