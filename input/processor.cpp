#include "input/processor.h"

#include <cstring>

#include "base/text_case.h"
#include "input/input_state.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

constexpr uint8_t MODEL_PLAIN = 1;
constexpr uint8_t MODEL_EXTENDED = 3;

bool IsExtendedModel(const char* name, char letter) {
    const unsigned char model = LowerByte(letter);
    if (model != 'e' && model != 'c') ReportAndStop("Unknown model: %s\n", name);
    return model == 'e';
}

void SetSizes(const ProcessorKind& processor) {
    Store.PointerSize = processor.large_pointer_size;
    for (uint32_t i = 0; i < NOF_BASIC_SIZES; ++i) SetBasicTypeSize(i, processor.basic_sizes[i]);
}

}  // namespace

void SetModelFlags(bool extended) {
    const uint8_t bits = extended ? MODEL_EXTENDED : MODEL_PLAIN;
    Store.Header.model_flags =
        static_cast<uint8_t>((Store.Header.model_flags & (0xC0 | bits)) | bits);
}

const ProcessorKind* FindProcessor(const char* name) {
    for (const ProcessorKind& processor : PROCESSORS)
        if (CompareNoCase(name, processor.prefix, std::strlen(processor.prefix)) == 0)
            return &processor;
    return nullptr;
}

const ProcessorKind& SetProcessor(const char* name) {
    const ProcessorKind* processor = FindProcessor(name);
    if (processor == nullptr && *name == '\0')
        ReportAndStop("Unknown processor, please declare processor with /p\n");
    if (processor == nullptr) ReportAndStop("Unknown processor: %s\n", name);
    const char letter = name[std::strlen(processor->prefix)];
    Input.Processor = processor;
    Input.ScanC166 = processor->ScanC166;
    Store.Header.processor = processor->scan_code;
    SetModelFlags(processor->model_letter && IsExtendedModel(name, letter));
    SetSizes(*processor);
    return *processor;
}

}  // namespace scan695
