// Types: chains, lists and references that never come.
#include "bench/hostile/hostile.h"

namespace scan695::bench {

std::span<const HostileCase> HostileTypes() {
    return {};
}

}  // namespace scan695::bench
