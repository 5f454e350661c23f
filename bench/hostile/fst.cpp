// Tables on their way into the FST file, and FST files for the inspector.
#include "bench/hostile/hostile.h"

namespace scan695::bench {

std::span<const HostileCase> HostileTables() {
    return {};
}

}  // namespace scan695::bench
