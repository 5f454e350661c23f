#include "stf/stf_stream.h"

#include <cassert>
#include <cstring>

#include "base/number_text.h"
#include "report/report.h"

namespace scan695 {

namespace {

char* Here() {
    return StfText + Stf.position;
}
void MoveTo(const char* end) {
    Stf.position = static_cast<uint32_t>(end - StfText);
}

// A key and the equals sign.
StfLine Field(const char* key) {
    StfLine line;
    line.Text(key).Char('=');
    return line;
}

}  // namespace

StfLine& StfLine::Text(std::string_view text) {
    assert(Stf.position + text.size() <= sizeof StfText);
    std::memcpy(Here(), text.data(), text.size());
    Stf.position += static_cast<uint32_t>(text.size());
    return *this;
}

StfLine& StfLine::Char(char c) {
    StfText[Stf.position++] = c;
    return *this;
}

StfLine& StfLine::Dec(int32_t value) {
    MoveTo(DecimalText(Here(), value));
    return *this;
}

StfLine& StfLine::Hex(uint32_t value) {
    Text("0x");
    MoveTo(HexText(Here(), value));
    return *this;
}

void StfLine::End() {
    Text("\r\n");
    if (Stf.position >= StfState::PAYLOAD) outFlush();
}

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

void outBegin(const char* kind, int32_t number) {
    StfLine().Text(kind).Char('.').Dec(number).Char('{').End();
}

void outEnd() {
    StfLine().Char('}').End();
}

void outStr(const char* key, const char* text) {
    StfLine line = Field(key);
    line.Char('"');
    for (; *text != '\0'; ++text) {
        if (*text == '\\' || *text == '"') line.Char('\\');
        line.Char(*text);
    }
    line.Text("\";").End();
}

void outDec(const char* key, int32_t value) {
    Field(key).Dec(value).Char(';').End();
}

void outHex(const char* key, uint32_t value) {
    Field(key).Hex(value).Char(';').End();
}

void outWord(const char* key, const char* word) {
    Field(key).Text(word).Char(';').End();
}

void outRef(const char* key, const char* kind, int32_t number) {
    Field(key).Char('@').Text(kind).Char('.').Dec(number).Char(';').End();
}

void outComment(const char* text) {
    StfLine().Text("// ").Text(text).End();
}

}  // namespace scan695
