#include <cstdlib>

#include "platform/memory.h"

namespace scan695 {

void* AllocateLarge(size_t size) {
    return std::malloc(size);
}

}  // namespace scan695
