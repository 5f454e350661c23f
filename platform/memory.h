// Memory in one large piece.
#pragma once

#include <cstddef>

namespace scan695 {

// Gives memory like malloc, to be freed with free(); large pieces lie in large pages where the
// system has them, since every small page costs a fault of its own when it is first written.
void* AllocateLarge(size_t size);

}  // namespace scan695
