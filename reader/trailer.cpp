// The two closing parts.
//
//     trailer       E2 C7 address [segment]          where the program starts,
//                   E2 C7 BE address [segment] BF    the same in brackets
//     module end    E1
#include "input/cursor.h"
#include "input/record_codes.h"
#include "reader/parts.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

void ScanTrailerPart(uint32_t offset) {
    Trace("Begin of Trailer\n");
    const PartFrame frame(offset);
    if (ReadCode() != CODE_ASG) UnexpectedRecord();
    uint32_t address = 0;
    bool bracket = false;
    if (ReadNumber(address) == 0) {
        if (ReadByte() != BYTE_OPEN_BRACKET) UnexpectedRecord();
        address = RequireNumber();
        bracket = true;
    }
    uint32_t segment = 0;
    if (ReadNumber(segment) != 0)
        Trace("BegAddr=%X:%X\n", segment, address);
    else
        Trace("BegAddr=%X\n", address);
    if (bracket && ReadByte() != BYTE_CLOSE_BRACKET) UnexpectedRecord();
    Store.Header.start_address = address;
    Store.Header.has_start_address = 1;
    Trace("End of Trailer part\n");
}

void ScanModuleEndPart(uint32_t offset) {
    Trace("Begin of Module End\n");
    const PartFrame frame(offset);
    if (ReadByte() != BYTE_ME) UnexpectedRecord();
    Trace("End of Module End part -- OK\n");
}

}  // namespace scan695
