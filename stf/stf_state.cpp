#include "stf/stf_state.h"

namespace scan695 {

StfRecordState StfRecords;

}  // namespace scan695
