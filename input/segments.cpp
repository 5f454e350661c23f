#include "input/segments.h"

#include "input/input_state.h"
#include "report/report.h"
#include "store/records.h"

namespace scan695 {

namespace {

// The first entry of a number; null and a trace line under the operation's name when there is none.
SegmentEntry* FindSegment(const char* operation, uint32_t index) {
    for (SegmentEntry& entry : Input.SegmentTable.Used())
        if (entry.index == index) return &entry;
    Trace("**** %s: inv seg=%u\n", operation, index);
    return nullptr;
}

}  // namespace

void AddSegment(uint32_t index, uint8_t mem_type) {
    SegmentList& segments = Input.SegmentTable;
    if (segments.count == SegmentList::LIMIT) {
        Trace("**** Segment Table Overflow, limit is %u\n", SegmentList::LIMIT);
        return;
    }
    segments.table[segments.count++] = {static_cast<uint16_t>(index), mem_type, 0, 0, 0};
}

void SetSegmentSize(uint32_t index, uint32_t value) {
    if (SegmentEntry* entry = FindSegment("SetSegmentSize", index)) entry->size = value;
}

void SetSegmentBase(uint32_t index, uint32_t value) {
    if (SegmentEntry* entry = FindSegment("SetSegmentBase", index)) entry->base = value;
}

void SetSegmentOffset(uint32_t index, uint32_t value) {
    if (SegmentEntry* entry = FindSegment("SetSegmentOffset", index)) entry->offset = value;
}

void SetSegmentMemType(uint32_t index, uint8_t mem_type) {
    if (SegmentEntry* entry = FindSegment("SetSegmentMemType", index)) entry->mem_type = mem_type;
}

uint32_t GetSegmentBase(uint32_t index) {
    const SegmentEntry* entry = FindSegment("GetSegmentBase", index);
    return entry != nullptr ? entry->base : 0;
}

uint8_t GetSegmentMemType(uint32_t index) {
    const SegmentEntry* entry = FindSegment("GetSegmentMemType", index);
    return entry != nullptr ? entry->mem_type : static_cast<uint8_t>(MEM_UNKNOWN);
}

void PrintSegments() {
    for (const SegmentEntry& entry : Input.SegmentTable.Used())
        Trace("Segment %u, mem_type=%u, addr=%x, offset=%x, size=%x\n", uint32_t{entry.index},
              uint32_t{entry.mem_type}, entry.base, entry.offset, entry.size);
}

}  // namespace scan695
