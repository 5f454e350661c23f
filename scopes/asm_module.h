// The scope block of an assembled module: symbols and section blocks.
//
//     BB10 body    symbols and BB11 blocks, in any order; F9
//     BB11         F8 0B, length; name, section kind, segment, two numbers;
//                  symbols and BB11 blocks; F9, size
#pragma once

namespace scan695 {

// Reads the body of a BB10 block, behind its head, up to and including its F9.
void ScanAsmModule();

}  // namespace scan695
