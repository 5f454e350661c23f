// The two functions that the library exports.
#include <cstdio>
#include <cstring>
#include <new>

#include "driver/run.h"
#include "report/report.h"
#include "scan695.h"

namespace {

constexpr unsigned char MODULE_BEGIN = 0xE0;

// The names that the check knows, exactly and with exactly this length.
constexpr const char* CHECKED_NAMES[] = {"TRI", "80166"};

bool IsForThisScanner(const unsigned char (&head)[7]) {
    if (head[0] != MODULE_BEGIN) return false;
    for (const char* name : CHECKED_NAMES)
        if (head[1] == std::strlen(name) && std::memcmp(head + 2, name, head[1]) == 0) return true;
    return false;
}

}  // namespace

uint32_t Check(uint32_t, const char* path) {
    std::FILE* file = std::fopen(path, "rb");
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
    } catch (const std::bad_alloc&) {
        scan695::ReportAndStop(scan695::ERROR_NO_MEMORY);
    }
}
