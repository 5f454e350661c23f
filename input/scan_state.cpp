#include "input/scan_state.h"

namespace scan695 {

ScanState Scan;

}  // namespace scan695
