// The ASN record, E2 CE, an index and a value: a value of the symbol or line with that index.
#pragma once

#include <cstdint>

namespace scan695 {

// Reads an ASN record that must be there, with that index. Anything else ends the run.
uint32_t ReadAsn(uint32_t idx);
// The same, but other bytes may stand at the cursor: they stay, and the result is false.
bool ReadOptionalAsn(uint32_t idx, uint32_t& value);

}  // namespace scan695
