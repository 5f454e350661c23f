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
//
// Lines are most of what a conversion does. They are put together in line, so that keys and words
// of a length known at the call are plain stores.
#pragma once

#include <cassert>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "base/number_text.h"
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

// Writes out what the flush rule says: all of up to 0x40000 bytes, else exactly 0x40000.
void outFlush();

// One line under construction; there is never more than one. Appends straight to the text buffer,
// where there is room for a whole line; End() adds CR LF and applies the flush rule.
class StfLine {
  public:
    StfLine() : end_(StfText + Stf.position) {}

    StfLine& Text(std::string_view text) {
        assert(text.size() <= static_cast<size_t>(StfText + sizeof StfText - end_));
        std::memcpy(end_, text.data(), text.size());
        end_ += text.size();
        return *this;
    }
    StfLine& Char(char c) {
        *end_++ = c;
        return *this;
    }
    // Between quotes. The text ends at its NUL.
    StfLine& Quoted(const char* text) {
        Char('"');
        for (; *text != '\0'; ++text) {
            if (*text == '\\' || *text == '"') [[unlikely]]
                Char('\\');
            Char(*text);
        }
        return Char('"');
    }
    StfLine& Dec(int32_t value) {
        end_ = DecimalText(end_, value);
        return *this;
    }
    // With 0x in front.
    StfLine& Hex(uint32_t value) {
        Text("0x");
        end_ = HexText(end_, value);
        return *this;
    }
    // The digits of `count` bytes.
    StfLine& Bytes(const uint8_t* bytes, uint32_t count);

    void End() {
        Text("\r\n");
        Stf.position = static_cast<uint32_t>(end_ - StfText);
        if (Stf.position >= StfState::PAYLOAD) [[unlikely]]
            outFlush();
    }

  private:
    char* end_;
};

// Lines of a record. Texts end at their first NUL.
inline void outBegin(std::string_view kind, int32_t number) {
    StfLine().Text(kind).Char('.').Dec(number).Char('{').End();
}

inline void outEnd() {
    StfLine().Char('}').End();
}

inline void outStr(std::string_view key, const char* text) {
    StfLine().Text(key).Char('=').Quoted(text).Char(';').End();
}

inline void outDec(std::string_view key, int32_t value) {
    StfLine().Text(key).Char('=').Dec(value).Char(';').End();
}

inline void outHex(std::string_view key, uint32_t value) {
    StfLine().Text(key).Char('=').Hex(value).Char(';').End();
}

inline void outWord(std::string_view key, std::string_view word) {
    StfLine().Text(key).Char('=').Text(word).Char(';').End();
}

inline void outRef(std::string_view key, std::string_view kind, int32_t number) {
    StfLine().Text(key).Text("=@").Text(kind).Char('.').Dec(number).Char(';').End();
}

inline void outComment(std::string_view text) {
    StfLine().Text("// ").Text(text).End();
}

}  // namespace scan695
