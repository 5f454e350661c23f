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
#include <string_view>

#include "stf/stf_state.h"

namespace scan695 {

// Creates the file, prints the banner, writes the first three Attrib records. `version` counts in
// hundredths. A file that cannot be created ends the run.
void outOpen(uint32_t version);
// Writes out what is left and closes the file.
void outCloseFile();

// The CPU Attrib, and the C166Flag that goes with it.
void outCpu(const char* name, uint32_t c166);
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
