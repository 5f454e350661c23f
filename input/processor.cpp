#include "input/processor.h"

#include <cstring>

#include "base/text_case.h"
#include "input/scan_state.h"
#include "report/report.h"
#include "store/basic_types.h"
#include "store/tables.h"

namespace scan695 {

namespace {

constexpr uint8_t MODEL_PLAIN = 1;
constexpr uint8_t MODEL_EXTENDED = 3;

struct ProcessorName {
    const char* prefix;  // compared without regard to case; the first match decides
    uint8_t processor;
    const char* cpu;  // value of the CPU Attrib; null for none
    uint32_t scan_c166;
    bool model_letter;  // the letter behind the prefix tells the memory model
};
constexpr ProcessorName PROCESSOR_NAMES[] = {
    {"296sa_", PROCESSOR_C166_FAMILY, nullptr, 0, true},
    {"80166", PROCESSOR_C166_FAMILY, "C166", 1, false},
    {"tri", PROCESSOR_TRICORE, "Tricore", 0, false},
};

bool IsExtendedModel(const char* name, char letter) {
    const unsigned char model = LowerByte(letter);
    if (model != 'e' && model != 'c') ReportAndStop("Unknown model: %s\n", name);
    return model == 'e';
}

}  // namespace

void SetModelFlags(bool extended) {
    const uint8_t bits = extended ? MODEL_EXTENDED : MODEL_PLAIN;
    Store.Header.model_flags =
        static_cast<uint8_t>((Store.Header.model_flags & (0xC0 | bits)) | bits);
}

const char* IdentifyProcessor(const char* name) {
    for (const ProcessorName& known : PROCESSOR_NAMES) {
        const size_t length = std::strlen(known.prefix);
        if (CompareNoCase(name, known.prefix, length) != 0) continue;
        Store.Header.processor = known.processor;
        SetModelFlags(known.model_letter && IsExtendedModel(name, name[length]));
        Scan.ScanC166 = known.scan_c166;
        return known.cpu;
    }
    if (*name != '\0') ReportAndStop("Unknown processor: %s\n", name);
    ReportAndStop("Unknown processor, please declare processor with /p\n");
}

void SetProcessorSizes() {
    BasicTypes = BasicTypeState();
    BasicTypes.PointerSize = Scan.ScanC166 != 0 ? 2 : 3;
    if (Store.Header.processor != PROCESSOR_TRICORE) return;
    BasicTypes.PointerSize = 4;
    SetBasicTypeSize(TYPE_UINT, 4);
    SetBasicTypeSize(TYPE_INT, 4);
    SetBasicTypeSize(TYPE_DOUBLE, 8);
    SetBasicTypeSize(TYPE_LDOUBLE, 8);
}

}  // namespace scan695
