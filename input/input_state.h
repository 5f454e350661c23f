// All run state of the input: the image and the cursor, what is known of the processor, the
// segments.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace scan695 {

struct ProcessorKind;

struct SegmentEntry {
    uint16_t index;    // segment number of the input
    uint8_t mem_type;  // FST memory type: 0 code, 2 data, 6 not known
    uint32_t base;     // load base
    uint32_t offset;   // for the trace only
    uint32_t size;     // for the trace only
};

// In the order of the ST records.
struct SegmentList {
    static constexpr uint32_t LIMIT = 50;
    SegmentEntry table[LIMIT] = {};
    uint32_t count = 0;

    std::span<SegmentEntry> Used() { return {table, count}; }
};

struct InputState {
    std::string InputPath;          // in upper case, for messages
    uint8_t* InputImage = nullptr;  // owned by the run
    uint32_t InputLength = 0;       // below 2^31
    uint32_t InputCursor = 0;       // offset of the next byte to read, never above InputLength

    const ProcessorKind* Processor = nullptr;  // a row of PROCESSORS; null before the header
    uint32_t ScanC166 = 0;                     // 1 for the processor name "80166"
    uint32_t ExternalPartOffset = 0;           // 0 for none
    SegmentList SegmentTable;
};
extern InputState Input;

// Starts a run. Whoever owns the image has freed it.
void StartInput();

}  // namespace scan695
