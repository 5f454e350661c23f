// The post-processing of a run with DebugMode: turns the tables of the scan into the sections of
// the FST image, with sorted indexes beside the records.
#pragma once

namespace scan695 {

// Runs once, behind the scan and the STF file. Leaves the tables empty, the header complete but for
// basic_sizes_offs, and the image positioned at its end. A failure or an interrupt ends the run.
void PostProcess();

}  // namespace scan695
