// Stack pointer adjustments: points in the code of a function at which the distance of the stack
// pointer from its frame changes. They are collected function by function into ranges, and hung on
// the function's symbol as location records. They serve the database only.
#pragma once

#include <cstdint>

namespace scan695 {

inline constexpr uint32_t STACK_INFO_CLOSE = 0xFFFFFFFF;

// Adds a point: from `pc` on the stack stands adjusted by `adjust`. A point of another function
// ends the collection before it, and so does a `stk_type` of STACK_INFO_CLOSE, for which the other
// arguments do not count and an empty collection stays as it is. Points outside all functions are
// dropped.
void AddStackInfo(uint32_t pc, uint32_t adjust, uint32_t stk_type);

}  // namespace scan695
