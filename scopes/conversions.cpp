#include "scopes/conversions.h"

#include <algorithm>
#include <cstring>

#include "platform/number_text.h"
#include "reader/primitives.h"
#include "report/report.h"
#include "store/records.h"
#include "store/tables.h"

namespace scan695 {

namespace {

constexpr int8_t MEM_TYPES[16] = {
    MEM_DATA, MEM_DATA, MEM_CODE, MEM_REGISTER, MEM_DATA, MEM_DATA, MEM_CODE, MEM_DATA,
    MEM_DATA, MEM_CODE, MEM_CODE, MEM_CODE,     MEM_CODE, MEM_CODE, MEM_CODE, MEM_CODE,
};

constexpr uint8_t STORAGE_CLASSES[8] = {
    0, STORAGE_AUTO, STORAGE_REGISTER, STORAGE_STATIC, 0, 0, 0, 0,
};

bool KnownProcessor() {
    const uint8_t processor = Store.Header.processor;
    return processor == PROCESSOR_C166_FAMILY || processor == PROCESSOR_TRICORE;
}

void TraceDoubtfulMemoryId(uint32_t id) {
    if (id == 0)
        Trace("**** CvtTkMemType: inv memory id=%u (assuming DATA)\n", id);
    else if (id == 7 || id == 8)
        Trace("**** Warning: 196/296 VWINDOW memory space - not implemented yet\n");
    else if (id > 8)
        Trace("**** CvtTkMemType: inv memory id=%u\n", id);
}

// A register value: bit 0 the high byte of a byte register, bits 1 to 4 the register, bits 5 to 8
// the other one of a pair, bits 12 to 15 what kind of register it is.
constexpr uint32_t REGISTER_PAIR = 4;
constexpr uint32_t REGISTER_BYTE = 2;

char* NumberedName(char* out, const char* letters, uint32_t number) {
    out = std::copy_n(letters, std::strlen(letters), out);
    return DecimalText(out, static_cast<int32_t>(number));
}

}  // namespace

int8_t CvtTkMemType(uint32_t id) {
    if (!KnownProcessor()) ReportAndStop("CvtTkMemType: unknown processor\n");
    id &= 15;
    TraceDoubtfulMemoryId(id);
    return MEM_TYPES[id];
}

uint8_t CvtTkStorageClass(uint32_t word) {
    if (!KnownProcessor()) ReportAndStop("CvtTkStorageClass: unknown processor\n");
    const uint8_t storage_class = STORAGE_CLASSES[word & 7];
    if (storage_class == 0) {
        Trace("**** CvtTkStorageClass: inv storage class=%u\n", word & 7);
        StopAtLastOffset("CvtTkStorageClass: unknown storage class encountered at %x\n");
    }
    return storage_class;
}

uint32_t outRegName(uint32_t value, char (&text)[REGISTER_NAME_SIZE]) {
    const uint32_t low = value >> 1 & 15;
    const uint32_t high = value >> 5 & 15;
    const uint32_t kind = value >> 12 & 15;
    char* end = text;
    uint32_t code = 0x80000000U | low;
    if (kind == REGISTER_PAIR) {
        end = NumberedName(end, "R", high);
        end = NumberedName(end, ",R", low);
        code = 0x84000000U | high << 20 | low;
    } else if (kind == REGISTER_BYTE) {
        const bool high_byte = (value & 1) != 0;
        end = NumberedName(end, high_byte ? "RH" : "RL", low);
        code = (high_byte ? 0x82000000U : 0x81000000U) + low;
    } else {
        end = NumberedName(end, "R", low);
    }
    *end = '\0';
    return code;
}

}  // namespace scan695
