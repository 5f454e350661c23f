#include "scopes/conversions.h"

#include "input/cursor.h"
#include "input/input_state.h"
#include "report/report.h"
#include "store/records.h"

namespace scan695 {

namespace {

constexpr int8_t MEM_TYPES[16] = {
    MEM_DATA, MEM_DATA, MEM_CODE, MEM_REGISTER, MEM_DATA, MEM_DATA, MEM_CODE, MEM_DATA,
    MEM_DATA, MEM_CODE, MEM_CODE, MEM_CODE,     MEM_CODE, MEM_CODE, MEM_CODE, MEM_CODE,
};

constexpr uint8_t STORAGE_CLASSES[8] = {
    0, STORAGE_AUTO, STORAGE_REGISTER, STORAGE_STATIC, 0, 0, 0, 0,
};

void TraceDoubtfulMemoryId(uint32_t id) {
    if (id == 0)
        Trace("**** CvtTkMemType: inv memory id=%u (assuming DATA)\n", id);
    else if (id == 7 || id == 8)
        Trace("**** Warning: 196/296 VWINDOW memory space - not implemented yet\n");
    else if (id > 8)
        Trace("**** CvtTkMemType: inv memory id=%u\n", id);
}

}  // namespace

int8_t CvtTkMemType(uint32_t id) {
    if (Input.Processor == nullptr) ReportAndStop("CvtTkMemType: unknown processor\n");
    id &= 15;
    TraceDoubtfulMemoryId(id);
    return MEM_TYPES[id];
}

uint8_t CvtTkStorageClass(uint32_t word) {
    if (Input.Processor == nullptr) ReportAndStop("CvtTkStorageClass: unknown processor\n");
    const uint8_t storage_class = STORAGE_CLASSES[word & 7];
    if (storage_class == 0) {
        Trace("**** CvtTkStorageClass: inv storage class=%u\n", word & 7);
        StopAtLastOffset("CvtTkStorageClass: unknown storage class encountered at %x\n");
    }
    return storage_class;
}

}  // namespace scan695
