// Symbols, lifetimes, lines and public symbols.
#include "bench/hostile/hostile.h"

namespace scan695::bench {

std::span<const HostileCase> HostileScopes() {
    return {};
}

}  // namespace scan695::bench
