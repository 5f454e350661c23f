// The line block of a source file. Files that it includes nest inside; the first file of a module
// gives the module its source, the lines of all of them go to the module.
//
//     BB5      F8 05, length; path, six numbers; records; F9
//     F0 idx name                                    NN, for the trace only
//     F1 CE idx type 7 line number number, ASN       a line and its address
//     F1 CE idx type 64 51 count, ASN x count        stack adjustment: PC, value, type
#pragma once

namespace scan695 {

// Reads a BB5 block, behind its length, up to and including its F9.
void ScanLines();

}  // namespace scan695
