// The scope block of an assembled module: symbols and section blocks.
//
//     BB10 body    symbols, BB11, then F9
//     BB11         F8 0B, length; name, section kind, segment, two numbers; symbols; F9, size
#pragma once

namespace scan695 {

// Reads the body of a BB10 block, behind its head, up to and including its F9.
void ScanAsmModule();

}  // namespace scan695
