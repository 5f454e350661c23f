// The readers of the parts of an object file. Each is called with the offset of its part, reads it,
// and leaves the cursor where it was. A part ends at the first code that its reader does not
// handle, once it has read at least one record; anything else that does not fit ends the run.
#pragma once

#include <cstdint>

namespace scan695 {

void ScanAdExtensionPart(uint32_t offset);
void ScanEnvironmentPart(uint32_t offset);
void ScanSegmentPart(uint32_t offset);
void ScanExternalPart(uint32_t offset);
void ScanDebugInfoPart(uint32_t offset);
void ScanDataPart(uint32_t offset);
void ScanTrailerPart(uint32_t offset);
void ScanModuleEndPart(uint32_t offset);

}  // namespace scan695
