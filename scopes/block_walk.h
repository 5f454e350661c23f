// The scope block of a compiled module: functions and their inner blocks nest, variables stand
// between them.
//
//     BB3 body     symbols, BB4, BB6, then F9
//     BB4, BB6     F8 04 or F8 06, length; name, stack size, type, start address, a number;
//                  symbols and BB6; F9, end address (inclusive)
#pragma once

namespace scan695 {

// Reads the body of a BB3 block, behind its head, up to and including its F9.
void ScanModuleScope();

}  // namespace scan695
