#include "tests/faults/hooks.h"

#include <malloc.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "store/chunk_file.h"

namespace scan695::test {

Hooks Faults;

namespace {

bool Inside = false;  // a conversion is running
uint64_t Allocated = 0;

void* Got(void* memory) {
    Allocated += malloc_usable_size(memory);
    return memory;
}
void* Given(void* memory) {
    Allocated -= malloc_usable_size(memory);
    return memory;
}

bool Fails(uint64_t& count, uint64_t failing) {
    ++count;
    return failing != 0 && (count == failing || (Faults.all_behind_fail_too && count > failing));
}

bool AllocationFails() {
    return Inside && Fails(Faults.allocations, Faults.failing_allocation);
}
void InterruptAt(Moment moment) {
    if (Inside && Faults.interrupt == moment) std::raise(SIGINT);
}

struct InsideConvert {
    InsideConvert() {
        Inside = true;
        Faults.allocations = 0;
    }
    ~InsideConvert() { Inside = false; }
};

}  // namespace

uint64_t AllocatedBytes() {
    return Allocated;
}

}  // namespace scan695::test

using namespace scan695::test;

// The linker puts these in front of the functions that they are named after.
extern "C" {
const char* __real_Convert(uint32_t word, const char* input, const char* stf, uint32_t debug);
const char* __wrap_Convert(uint32_t word, const char* input, const char* stf, uint32_t debug) {
    const InsideConvert inside;
    return __real_Convert(word, input, stf, debug);
}

void* __real_malloc(size_t size);
void* __wrap_malloc(size_t size) {
    return AllocationFails() ? nullptr : Got(__real_malloc(size));
}

void __real_free(void* memory);
void __wrap_free(void* memory) {
    __real_free(Given(memory));
}

void* __real_calloc(size_t count, size_t size);
void* __wrap_calloc(size_t count, size_t size) {
    return AllocationFails() ? nullptr : Got(__real_calloc(count, size));
}

void* __real_realloc(void* memory, size_t size);
void* __wrap_realloc(void* memory, size_t size) {
    return AllocationFails() ? nullptr : Got(__real_realloc(Given(memory), size));
}

size_t __real_fread(void* buffer, size_t size, size_t count, std::FILE* file);
size_t __wrap_fread(void* buffer, size_t size, size_t count, std::FILE* file) {
    InterruptAt(Moment::LOAD);
    const size_t read = __real_fread(buffer, size, count, file);
    return Inside && Faults.short_read && read > 0 ? read - 1 : read;
}

// Member functions and functions of a namespace under the names that the linker sees.
using scan695::ChunkFile;

bool RealSaveAndFree(ChunkFile*,
                     std::FILE*) __asm__("__real__ZN7scan6959ChunkFile11SaveAndFreeEP8_IO_FILE");
bool SaveAndFree(ChunkFile* image,
                 std::FILE* file) __asm__("__wrap__ZN7scan6959ChunkFile11SaveAndFreeEP8_IO_FILE");
bool SaveAndFree(ChunkFile* image, std::FILE* file) {
    InterruptAt(Moment::SAVE);
    return RealSaveAndFree(image, file);
}

// A step of a run that an interrupt comes in front of.
#define STEP(name, symbol, moment)               \
    void Real##name() __asm__("__real_" symbol); \
    void name##Hook() __asm__("__wrap_" symbol); \
    void name##Hook() {                          \
        InterruptAt(moment);                     \
        Real##name();                            \
    }
STEP(PostProcess, "_ZN7scan69511PostProcessEv", Moment::POST_PROCESS)
STEP(Ranges, "_ZN7scan69515BuildRangeTableEv", Moment::RANGES)
}

void* operator new(size_t size) {
    void* memory = __wrap_malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return __wrap_malloc(size);
}
void operator delete(void* memory) noexcept {
    __wrap_free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    __wrap_free(memory);
}
