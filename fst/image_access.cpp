#include "fst/image_access.h"

#include "report/report.h"

namespace scan695 {

void RequireInImage(uint64_t offset) {
    if (offset > Store.FstImage.Size()) ReportAndStop(ERROR_READ_TEMPORARY);
}

std::optional<TYPEINFO> FindType(uint32_t type_index) {
    const uint32_t wanted = type_index & TYPE_LOOKUP_MASK;
    int32_t lo = 0;
    int32_t hi = static_cast<int32_t>(Store.Header.nof_types) - 1;
    while (lo <= hi) {
        const int32_t mid = lo + (hi - lo) / 2;
        const TYPEINFO type = GetSortedTypeRecord(static_cast<uint32_t>(mid));
        if (wanted > type.here_type_index)
            lo = mid + 1;
        else if (wanted < type.here_type_index)
            hi = mid - 1;
        else
            return type;
    }
    return std::nullopt;
}

}  // namespace scan695
