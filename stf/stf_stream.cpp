#include "stf/stf_stream.h"

#include <cassert>
#include <cstring>
#include <string>

#include "base/number_text.h"
#include "base/text_case.h"
#include "report/report.h"

namespace scan695 {

StfState Stf;

namespace {

std::string FileName = "test.stf";

char* Here() {
    return Stf.text + Stf.position;
}
void MoveTo(const char* end) {
    Stf.position = static_cast<uint32_t>(end - Stf.text);
}

// A key and the equals sign.
StfLine Field(const char* key) {
    StfLine line;
    line.Text(key).Char('=');
    return line;
}

}  // namespace

StfLine& StfLine::Text(std::string_view text) {
    assert(Stf.position + text.size() <= sizeof Stf.text);
    std::memcpy(Here(), text.data(), text.size());
    Stf.position += static_cast<uint32_t>(text.size());
    return *this;
}

StfLine& StfLine::Char(char c) {
    Stf.text[Stf.position++] = c;
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

void outSetFileName(const char* path) {
    if (Stf.file != nullptr) std::fclose(Stf.file);
    Stf.C166Flag = 0;
    Stf.AttribCounter = 0;
    Stf.position = 0;
    Stf.file = nullptr;
    FileName = path;
}

void outOpen(uint32_t version) {
    Stf.C166Flag = 0;
    Stf.file = std::fopen(FileName.c_str(), "wb");
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
        if (Stf.position != 0) std::fwrite(Stf.text, Stf.position, 1, Stf.file);
        Stf.position = 0;
        return;
    }
    std::fwrite(Stf.text, StfState::PAYLOAD, 1, Stf.file);
    Stf.position -= StfState::PAYLOAD;
    std::memcpy(Stf.text, Stf.text + StfState::PAYLOAD, Stf.position);
}

void outCpu(const char* name) {
    outAttrib("CPU", name);
    if (CompareNoCase(name, "C166") == 0) Stf.C166Flag = 1;
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
