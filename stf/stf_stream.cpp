#include "stf/stf_stream.h"

#include <cstring>

#include "report/report.h"

namespace scan695 {

void outOpen(uint32_t version) {
    Stf.file = std::fopen(Stf.FileName.c_str(), "wb");
    if (Stf.file == nullptr) ReportAndStop(ERROR_OPEN_OUTPUT);
    std::setvbuf(Stf.file, nullptr, _IONBF, 0);  // the text buffer is the buffer
    PrintLine("IEEE695 converter version %u.%02u is running ...\n", version / 100, version % 100);
    char text[32];
    std::snprintf(text, sizeof text, "%u.%02u", version / 100, version % 100);
    outAttrib("DLL_Version", text);
    outAttrib("COMPILER", "TASKING");
    outAttrib("HLLFORMAT", "IEEE695");
}

void outCloseFile() {
    outFlush();
    std::fclose(Stf.file);
    Stf.file = nullptr;
}

void outFlush() {
    if (Stf.position <= StfState::PAYLOAD) {
        if (Stf.position != 0) std::fwrite(StfText, Stf.position, 1, Stf.file);
        Stf.position = 0;
        return;
    }
    std::fwrite(StfText, StfState::PAYLOAD, 1, Stf.file);
    Stf.position -= StfState::PAYLOAD;
    std::memcpy(StfText, StfText + StfState::PAYLOAD, Stf.position);
}

void outCpu(const char* name, uint32_t c166) {
    outAttrib("CPU", name);
    Stf.C166Flag = c166;
}

void outAttrib(const char* name, const char* value) {
    outBegin("Attrib", Stf.AttribCounter);
    outStr("name", name);
    outStr("value", value);
    outEnd();
    ++Stf.AttribCounter;
}

}  // namespace scan695
