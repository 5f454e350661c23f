// Tells the processor from the first name of the file and sets what follows from it.
#pragma once

namespace scan695 {

// Sets processor, model_flags and ScanC166 and gives the value of the CPU Attrib, null for none. A
// name that no processor has ends the run.
const char* IdentifyProcessor(const char* name);

// BasicTypeSizes and PointerSize of the processor that has been identified.
void SetProcessorSizes();

// Sets bit 0 of model_flags, and bit 1 for the extended model.
void SetModelFlags(bool extended);

}  // namespace scan695
