// The data part: the memory image of the linked program as a sequence of load records.
//
//     E5 segment             address and memory type of that segment hold from here on
//     E2 D0 segment, address the address alone changes
//     F7 count               the next ED record is laid down that many times
//     ED n, bytes            n bytes
//
// E3, E4 and FA open load records that the scanner does not process: they end the part wherever
// they stand. E2 C7, which opens the trailer, and any other byte end it behind the first record.
#include <algorithm>

#include "input/cursor.h"
#include "input/record_codes.h"
#include "input/segments.h"
#include "reader/parts.h"
#include "report/report.h"
#include "stf/code_records.h"
#include "store/code_table.h"
#include "store/records.h"

namespace scan695 {

namespace {

struct LoadState {
    uint32_t address = 0;
    uint8_t mem_type = MEM_UNKNOWN;
    int32_t repeats = 1;
    uint32_t records = 0;
};

void ReadSegmentChoice(LoadState& load) {
    const uint32_t segment = RequireNumber();
    load.address = GetSegmentBase(segment);
    load.mem_type = GetSegmentMemType(segment);
    Trace("CurrSeg=%u, mem_type=%u\n", segment, uint32_t{load.mem_type});
}

void ReadLoadAddress(LoadState& load) {
    const uint32_t segment = RequireNumber();
    load.address = RequireNumber();
    Trace("LoadPC=%X in Seg=%u\n", load.address, segment);
}

void ReadRepeat(LoadState& load) {
    uint32_t count = 1;
    if (ReadNumber(count) != 0)
        Trace("Repeat %d times:\n", static_cast<int32_t>(count));
    else
        Trace("Repeat (no value), 1 assumed:\n");
    load.repeats = static_cast<int32_t>(count);
}

// Hands the next `size` bytes to the CodeTable in chunks.
void KeepBytes(const LoadState& load, uint32_t address, uint32_t size) {
    CODEINFO record = {};
    record.module = -1;
    record.mem_type = load.mem_type;
    while (size > 0) {
        record.address = address;
        record.length = std::min(size, MAX_CHUNK);
        AddToCodeTable(record, TakeBytes(record.length));
        address += record.length;
        size -= record.length;
    }
}

// With DebugMode every repetition is told and kept.
void KeepRepetitions(const LoadState& load, uint32_t size, uint32_t repeats) {
    const uint32_t first = Input.InputCursor;
    uint32_t address = load.address;
    for (uint32_t i = 0; i < repeats; ++i, address += size) {
        Trace("Code: addr=%08X size=%d\n", address, static_cast<int32_t>(size));
        KeepBytes(load, address, size);
        Input.InputCursor = first;
    }
}

// Without it the table is as large; of bytes that the input does not have, the whole chunks count
// in front of the end.
void CountRepetitions(uint32_t size, uint32_t repeats) {
    const uint32_t left = BytesLeft();
    CountInCodeTable(size <= left ? size : left / MAX_CHUNK * MAX_CHUNK, repeats);
}

// The bytes go to the CodeTable and to the Code records of the STF file.
void EmitBytes(LoadState& load, uint32_t size, uint32_t repeats) {
    RequireRoomForCode(size, repeats);
    if (Report.DebugMode != 0)
        KeepRepetitions(load, size, repeats);
    else
        CountRepetitions(size, repeats);
    const auto mem_type = static_cast<int8_t>(load.mem_type);
    outCodeAdd(mem_type, load.address, TakeBytes(size), size, repeats);
    load.address += size * repeats;
}

void ReadBytes(LoadState& load) {
    const uint32_t size = RequireNumber();
    if (load.repeats > 0)
        EmitBytes(load, size, static_cast<uint32_t>(load.repeats));
    else
        TakeBytes(size);
    load.repeats = 1;
}

// An assignment; false for one that ends the part.
bool ReadLoadAssignment(LoadState& load) {
    const uint8_t letter = ReadByte();
    if (letter == LETTER_P) {
        ReadLoadAddress(load);
        return true;
    }
    if (letter != LETTER_G || load.records == 0) UnexpectedRecord();
    Trace("End of Data part, rec=%x\n", uint32_t{letter});
    return false;
}

// One record; false for one that ends the part.
bool ReadLoadRecord(LoadState& load) {
    const uint8_t byte = ReadByte();
    switch (byte) {
        case BYTE_SB:
            ReadSegmentChoice(load);
            return true;
        case BYTE_AS:
            return ReadLoadAssignment(load);
        case BYTE_RE:
            ReadRepeat(load);
            return true;
        case BYTE_LD:
            ReadBytes(load);
            return true;
        case BYTE_LR_RELOCATED:
        case BYTE_LR_SPACES:
        case BYTE_LR:
            Trace("Unprocessed record=%x at %x\n", uint32_t{byte}, LastOffset());
            return false;
        default:
            if (load.records == 0) UnexpectedRecord();
            Trace("End of Data part, rec=%x\n", uint32_t{byte});
            return false;
    }
}

}  // namespace

void ScanDataPart(uint32_t offset) {
    Trace("Begin of Data\n");
    const PartFrame frame(offset);
    PrintSegments();
    LoadState load;
    while (ReadLoadRecord(load)) ++load.records;
}

}  // namespace scan695
