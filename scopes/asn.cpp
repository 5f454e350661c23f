#include "scopes/asn.h"

#include "input/cursor.h"
#include "input/record_codes.h"

namespace scan695 {

bool ReadOptionalAsn(uint32_t idx, uint32_t& value) {
    if (ReadCode() != CODE_ASN) {
        UnreadBytes(2);
        return false;
    }
    RequireIndex(idx);
    if (ReadNumber(value) == 0) StopAtLastOffset("Unrecognized value at %x\n");
    return true;
}

uint32_t ReadAsn(uint32_t idx) {
    uint32_t value = 0;
    if (!ReadOptionalAsn(idx, value)) {
        ReadCode();
        StopAtLastOffset("ASN:Unexpected record at %x\n");
    }
    return value;
}

}  // namespace scan695
