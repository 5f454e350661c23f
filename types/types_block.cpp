#include "types/types_block.h"

#include "input/cursor.h"
#include "input/record_codes.h"
#include "report/report.h"
#include "types/cvt_type.h"
#include "types/definition.h"
#include "types/type_state.h"

namespace scan695 {

namespace {

uint32_t ScanTypeName(char* name) {
    const uint32_t ref_idx = RequireNumber();
    ReadName(name, BLOCK_NAME_SIZE);
    Trace("TypeName=%s, ref_idx=%u\n", name, ref_idx);
    return ref_idx;
}

void ScanTypeRecord(uint32_t ref_idx, char* name) {
    const uint32_t tk_idx = RequireNumber();
    if (ReadByte() != LETTER_N) UnexpectedRecord();
    if (RequireNumber() != ref_idx) StopAtLastOffset("Unexpected type ident at %x\n");
    Trace("Type=%u, ref_idx=%u\n", tk_idx, ref_idx);
    if (tk_idx < FIRST_USER_TYPE) StopAtLastOffset("Unrecognized compound type at %X\n");
    ScanType(tk_idx, 0, name);
}

}  // namespace

void ScanTypes() {
    Trace("Scanning types...\n");
    BeginTypeBlock();
    uint32_t ref_idx = 0;
    char name[BLOCK_NAME_SIZE] = {};  // stays in force until the next name record
    for (uint8_t byte = ReadByte(); byte != BYTE_BE; byte = ReadByte()) {
        if (byte == BYTE_NN)
            ref_idx = ScanTypeName(name);
        else if (byte == BYTE_TY)
            ScanTypeRecord(ref_idx, name);
        else
            UnexpectedRecord();
    }
    Trace("End scanning types\n");
}

}  // namespace scan695
