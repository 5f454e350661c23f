// Faults from below: the program is linked so that allocations, the read of the input and the main
// steps of a run pass through here, where they can be counted, fail, or meet an interrupt. Of
// allocations only those inside Convert count.
#pragma once

#include <cstdint>

namespace scan695::test {

// Where an interrupt (SIGINT) comes.
enum class Moment { NEVER, LOAD, POST_PROCESS, RANGES, SAVE };

struct Hooks {
    uint64_t allocations = 0;  // of this run so far; stdio's own buffers are not among them
    // Number of the one that fails, from 1 on; 0 for none.
    uint64_t failing_allocation = 0;
    bool all_behind_fail_too = false;
    bool short_read = false;  // the read of the input gives a byte less
    Moment interrupt = Moment::NEVER;
};
// Assigned by a test, for the runs that follow.
extern Hooks Faults;

// Bytes that this program has allocated now, libraries below C++'s own apart.
uint64_t AllocatedBytes();

}  // namespace scan695::test
