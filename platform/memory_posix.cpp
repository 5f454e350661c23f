#include <sys/mman.h>

#include <cstdlib>

#include "platform/memory.h"

namespace scan695 {

void* AllocateLarge(size_t size) {
#if defined(MADV_HUGEPAGE)
    constexpr size_t PAGE = size_t{2} << 20;
    if (size < 2 * PAGE) return std::malloc(size);
    void* memory = nullptr;
    if (posix_memalign(&memory, PAGE, size) != 0) return nullptr;
    // Whole pages only: the rest of the last one would count as memory in use.
    madvise(memory, size / PAGE * PAGE, MADV_HUGEPAGE);
    return memory;
#else
    return std::malloc(size);
#endif
}

}  // namespace scan695
