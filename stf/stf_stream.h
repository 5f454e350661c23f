// The one text output of the system. Writers of STF records append whole lines to a buffer in
// memory; the buffer goes to the STF file in blocks of 262,144 bytes. The file is 8-bit text, every
// line ends in CR LF, records do not nest:
//
//     Symbol.7{            head line: kind and number
//     name="x";            quoted: each \ and " of the text preceded by a \ .
//     address=0x1f;        hexadecimal
//     number=-4;           decimal
//     language=asm;        word of the vocabulary
//     block=@Block.2;      reference to another record
//     // text              comment
//     }
//
// Writing cannot fail for the caller: a failed write to the disk is not noticed.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string_view>

namespace scan695 {

struct StfState {
    static constexpr uint32_t PAYLOAD = 0x40000;  // bytes of a full block
    static constexpr uint32_t SPARE = 500;        // no line is longer than this

    uint32_t C166Flag = 0;      // 1 behind a CPU Attrib of "C166"
    int32_t AttribCounter = 0;  // number of the next Attrib record
    uint32_t position = 0;      // next free byte of the text buffer
    std::FILE* file = nullptr;
    char text[PAYLOAD + SPARE];
};
extern StfState Stf;

// Starts a run: the path of the STF file, kept as a copy. The stream must be closed.
void outSetFileName(const char* path);

// Creates the file, prints the banner, writes the first three Attrib records. `version` counts in
// hundredths. A file that cannot be created ends the run.
void outOpen(uint32_t version);
// Writes out what is left and closes the file.
void outCloseFile();

// The CPU Attrib; "C166" in any case sets C166Flag.
void outCpu(const char* name);
// A whole Attrib record.
void outAttrib(const char* name, const char* value);

// Lines of a record. Texts end at their first NUL.
void outBegin(const char* kind, int32_t number);
void outEnd();
void outStr(const char* key, const char* text);
void outDec(const char* key, int32_t value);
void outHex(const char* key, uint32_t value);
void outWord(const char* key, const char* word);
void outRef(const char* key, const char* kind, int32_t number);
void outComment(const char* text);

// Writes out what the flush rule says: all of up to 0x40000 bytes, else exactly 0x40000.
void outFlush();

// One line under construction, for the forms that are not among the above. Appends straight to the
// text buffer; End() adds CR LF and applies the flush rule.
class StfLine {
  public:
    StfLine& Text(std::string_view text);
    StfLine& Char(char c);
    StfLine& Dec(int32_t value);
    StfLine& Hex(uint32_t value);  // with 0x in front
    void End();
};

}  // namespace scan695
