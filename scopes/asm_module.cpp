#include "scopes/asm_module.h"

#include "input/cursor.h"
#include "input/record_codes.h"
#include "input/segments.h"
#include "report/report.h"
#include "scopes/scan_symbol.h"
#include "store/records.h"

namespace scan695 {

namespace {

// Kinds of section by number: 0, 1 and 5 code, 2, 3 and 4 data.
constexpr uint8_t SECTION_MEM_TYPES[] = {MEM_CODE, MEM_CODE, MEM_DATA,
                                         MEM_DATA, MEM_DATA, MEM_CODE};

uint8_t SectionMemType(uint32_t kind) {
    return kind < sizeof SECTION_MEM_TYPES ? SECTION_MEM_TYPES[kind] : uint8_t{MEM_UNKNOWN};
}

// A section tells the memory type of a segment that the segment part has left open.
void TeachSegment(uint32_t segment, uint8_t mem_type) {
    const uint8_t known = GetSegmentMemType(segment);
    if (known == mem_type) return;
    if (known == MEM_UNKNOWN)
        SetSegmentMemType(segment, mem_type);
    else
        Trace(" **** cur_mem_type=%u, mem_type=%u **** ", uint32_t{known}, uint32_t{mem_type});
}

// Section blocks make neither block nor symbol.
void ReadSectionHead(char* name) {
    if (ReadByte() != BB11) UnexpectedRecord();
    RequireNumber();
    ReadName(name, SECTION_NAME_SIZE);
    const uint32_t kind = OptionalNumber();
    Trace("Block BB11[%s]: n2=%x", name, kind);
    const uint8_t mem_type = SectionMemType(kind);
    if (mem_type == MEM_UNKNOWN) Trace(" **** UNKNOWN **** ");
    const uint32_t segment = OptionalNumber();
    Trace(", n3=%x,", segment);
    TeachSegment(segment, mem_type);
    const uint32_t n4 = OptionalNumber();
    Trace(" n4=%x,", n4);
    const uint32_t n5 = OptionalNumber();
    Trace(" n5=%x\n", n5);
}

}  // namespace

void ScanAsmModule() {
    uint32_t unterminated = 0;
    uint32_t open_sections = 0;
    char section[SECTION_NAME_SIZE] = {};  // a name that does not come leaves the one before
    for (;;) {
        const uint8_t byte = ReadByte();
        switch (byte) {
            case BYTE_NN:
                ScanSymbol(unterminated);
                break;
            case BYTE_BB:
                ReadSectionHead(section);
                ++open_sections;
                break;
            case BYTE_BE:
                if (open_sections == 0) return;
                OptionalNumber();
                --open_sections;
                break;
            default:
                UnexpectedRecordByte(byte);
        }
    }
}

}  // namespace scan695
