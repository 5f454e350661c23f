// The two functions that the library exports.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string_view>

#include "driver/run.h"
#include "input/processor.h"
#include "input/record_codes.h"
#include "report/report.h"
#include "scan695.h"

namespace {

// Names compare exactly and with their length.
bool IsForThisScanner(const unsigned char (&head)[7]) {
    if (head[0] != scan695::BYTE_MB) return false;
    const std::string_view name(reinterpret_cast<const char*>(head) + 2, sizeof head - 2);
    const auto has_name = [&](const scan695::ProcessorKind& processor) {
        return processor.checked_name != nullptr &&
               head[1] == std::strlen(processor.checked_name) &&
               name.starts_with(processor.checked_name);
    };
    return std::ranges::any_of(scan695::PROCESSORS, has_name);
}

}  // namespace

uint32_t Check(uint32_t, const char* path) {
    std::FILE* file = path != nullptr ? std::fopen(path, "rb") : nullptr;
    if (file == nullptr) return 0;
    unsigned char head[7] = {};
    const bool whole = std::fread(head, 1, sizeof head, file) == sizeof head;
    std::fclose(file);
    return whole && IsForThisScanner(head) ? 1 : 0;
}

const char* Convert(uint32_t, const char* input_path, const char* stf_path, uint32_t debug) {
    try {
        scan695::StartRun(debug, stf_path);
        return scan695::RunConversion(input_path) > 0 ? "IEEE695 conversion error" : nullptr;
    } catch (const std::exception&) {  // no memory, or a length that no container takes
        scan695::ReportAndStop(scan695::ERROR_NO_MEMORY);
    }
}
