// The segment part:
//
//     E6 segment, type letters, name, 3 numbers     ST: a segment
//     E7 number, number, number                     SA: alignment, ignored
//     E2 CC segment, base                           load base
//     E2 D2 segment, offset
//     E2 D3 segment, size
//     E2 C1/C2/C6/CD segment, value                 ignored
//     E2 C3 name, E2 C5 name, numbers               ignored
#include "input/cursor.h"
#include "input/record_codes.h"
#include "input/segments.h"
#include "reader/parts.h"
#include "report/report.h"
#include "store/records.h"

namespace scan695 {

namespace {

// The letters behind a segment number: A S or E A, then D for data, P or R for code. A byte that is
// no such letter is the length of the name.
uint8_t ReadTypeLetters() {
    const uint8_t first = ReadByte();
    if (first != LETTER_A && first != LETTER_E) UnexpectedRecord();
    if (ReadByte() != (first == LETTER_A ? LETTER_S : LETTER_A)) UnexpectedRecord();
    const uint8_t letter = PeekByte();
    if (letter != LETTER_D && letter != LETTER_P && letter != LETTER_R) return MEM_UNKNOWN;
    ReadByte();
    return letter == LETTER_D ? MEM_DATA : MEM_CODE;
}

void ReadSegment(char* name) {
    const uint32_t index = RequireNumber();
    const uint8_t mem_type = ReadTypeLetters();
    ReadName(name, PART_NAME_SIZE);
    for (int i = 0; i < 3; ++i) OptionalNumber();
    AddSegment(index, mem_type);
    Trace("Segment: name=%s, idx=%u, mem_type=%u\n", name, index, uint32_t{mem_type});
}

void ReadAlignment() {
    RequireNumber();
    uint32_t ignored = 0;
    if (ReadNumber(ignored) != 0) ReadNumber(ignored);
}

// The values that the table keeps.
struct SegmentValue {
    uint8_t letter;
    void (*store)(uint32_t index, uint32_t value);
    const char* name;
    const char* field;
};
constexpr SegmentValue SEGMENT_VALUES[] = {
    {LETTER_L, SetSegmentBase, "Base", "base"},
    {LETTER_R, SetSegmentOffset, "Offset", "offset"},
    {LETTER_S, SetSegmentSize, "Size", "size"},
};

void ReadValue(const SegmentValue& kind) {
    const uint32_t index = RequireNumber();
    const uint32_t value = RequireNumber();
    kind.store(index, value);
    Trace("Segment %s: idx=%u, %s=%x\n", kind.name, index, kind.field, value);
}

void ReadIgnoredValue() {
    const uint32_t index = RequireNumber();
    RequireNumber();
    Trace("C1/C2/C6/CD on segment %u -- ignore\n", index);
}

void ReadIgnoredName(uint8_t letter, char* name) {
    ReadName(name, PART_NAME_SIZE);
    uint32_t ignored = 0;
    while (letter == LETTER_E && ReadNumber(ignored) != 0) {
    }
    Trace("C%u on segment -- ignore\n", letter & 15U);
}

void ReadAssignment(char* name) {
    const uint8_t letter = ReadByte();
    for (const SegmentValue& kind : SEGMENT_VALUES)
        if (kind.letter == letter) return ReadValue(kind);
    switch (letter) {
        case LETTER_A:
        case LETTER_B:
        case LETTER_F:
        case LETTER_M:
            return ReadIgnoredValue();
        case LETTER_C:
        case LETTER_E:
            return ReadIgnoredName(letter, name);
        default:
            UnexpectedRecord();
    }
}

// One record; false for a byte that ends the part.
bool ReadSegmentRecord(uint8_t byte, char* name) {
    switch (byte) {
        case BYTE_ST:
            ReadSegment(name);
            return true;
        case BYTE_SA:
            ReadAlignment();
            return true;
        case BYTE_AS:
            ReadAssignment(name);
            return true;
        case BYTE_REFUSED_FB:
        case BYTE_REFUSED_FC:
        case BYTE_REFUSED_FD:
            UnexpectedRecord();
        default:
            return false;
    }
}

}  // namespace

void ScanSegmentPart(uint32_t offset) {
    Trace("Begin of Segment Part, fpos=%x\n", offset);
    {
        const PartFrame frame(offset);
        char name[PART_NAME_SIZE] = {};
        uint32_t records = 0;
        uint8_t byte = ReadByte();
        for (; ReadSegmentRecord(byte, name); byte = ReadByte()) ++records;
        if (records == 0) UnexpectedRecord();
        Trace("End of Segment Part, rec=%x\n", uint32_t{byte});
    }
    PrintSegments();
}

}  // namespace scan695
