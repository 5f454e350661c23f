// Works out which module owns which stretch of code memory: the code blocks of the input do not
// say, so the blocks, lines and code symbols of each module do.
#pragma once

namespace scan695 {

// Writes the RANGEINFO section of the image. Reads the finished block, symbol and line sections and
// the CodeTable, and needs ModuleWork. A failure ends the run.
void BuildRangeTable();

}  // namespace scan695
