// The scanner: reads the module header, tells the processor from the first name of the file, and
// walks the eight ASW records, which point to the parts.
#pragma once

#include <cstdint>

namespace scan695 {

// Scans the whole module and writes all STF records but the Code records. Failures end the run.
void ScanModule();

// Frees the objects of the scan; can be called again.
void ScannerCleanup();

}  // namespace scan695
