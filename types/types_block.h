// The reader of a block of types. Its records:
//
//     F0 ref_idx name                      names an index
//     F2 tk_idx CE ref_idx definition      defines the type tk_idx
//     F9                                   ends the block
#pragma once

namespace scan695 {

// Reads from the first record behind the block's head up to and including the F9.
void ScanTypes();

}  // namespace scan695
