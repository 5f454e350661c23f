#include "input/segments.h"

#include "report/report.h"
#include "store/records.h"

namespace scan695 {

SegmentState Segments;

namespace {

// The first entry of a number; null and a trace line under the operation's name when there is none.
SegmentEntry* FindSegment(const char* operation, uint32_t index) {
    for (uint32_t i = 0; i < Segments.count; ++i)
        if (Segments.table[i].index == index) return &Segments.table[i];
    Trace("**** %s: inv seg=%u\n", operation, index);
    return nullptr;
}

}  // namespace

void AddSegment(uint32_t index, uint8_t mem_type) {
    if (Segments.count == SegmentState::LIMIT) {
        Trace("**** Segment Table Overflow, limit is %u\n", SegmentState::LIMIT);
        return;
    }
    Segments.table[Segments.count++] = {static_cast<uint16_t>(index), mem_type, 0, 0, 0};
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
    for (uint32_t i = 0; i < Segments.count; ++i) {
        const SegmentEntry& entry = Segments.table[i];
        Trace("Segment %u, mem_type=%u, addr=%x, offset=%x, size=%x\n", uint32_t{entry.index},
              uint32_t{entry.mem_type}, entry.base, entry.offset, entry.size);
    }
}

}  // namespace scan695
