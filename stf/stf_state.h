// What the writers of STF records keep between calls: the numbers of the records, and what the scan
// tells them about those to come. A run starts by assigning a new StfRecordState.
#pragma once

#include <cstdint>

namespace scan695 {

struct StfRecordState {
    int32_t SymbolCounter = 0;   // number of the next Symbol record
    int32_t RangeCounter = 0;    // of the next Range record
    int32_t SourceCounter = -1;  // of the last Source record
    int32_t MemberCounter = 0;   // of the next Member record, over the whole file
    int32_t SourceDepth = 0;     // open source files of a known module
    int32_t StackAdjust = 0;     // added to the stack offset of every auto that is written
};
extern StfRecordState StfRecords;

inline void SetStackAdjust(uint32_t value) {
    StfRecords.StackAdjust = static_cast<int32_t>(value);
}

}  // namespace scan695
