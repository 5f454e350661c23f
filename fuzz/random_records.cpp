#include "fuzz/random_records.h"

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace scan695::fuzz {

namespace {

const std::map<char, std::vector<std::string_view>> PATTERNS = {
    // o a bit, q a small number, V any number, p an address, t a type, N a name.
    {'o', {"00", "01"}},
    {'q', {"00", "01", "02", "03", "04", "05", "06", "07"}},
    {'v', {"7F", "81 80", "81 FF", "82 01 00", "82 FF FF", "83 01 00 00", "84 7F FF FF FF"}},
    {'w', {"10", "20", "84 80 00 00 00", "84 FF FF FF FE", "84 FF FF FF FF"}},
    {'V', {"q", "q", "v", "w", "p"}},
    {'p', {"82 02 q", "82 02 q", "82 02 q", "82 02 10", "82 02 12", "82 02 1E", "v", "w"}},
    {'t', {"82 01 q", "82 01 q", "82 01 q", "82 01 q", "q", "10", "13", "0F", "2B", "w"}},
    {'N',
     {"n'a'", "n'_a'", "n'main'", "n'_main'", "n'bit'", "n'start'", "n'_12ab'", "n'x\\y'",
      "n'MAIN'", "n'q\"'", "n'b'", "n'c'", "n'_'", "n'\xE4'", "00", "78 rrrrrrrr"}},
    {'r', {"'nnnnnnnnnnnnnnn'"}},
    // K an attribute, G a segment, P a public symbol, Q load data.
    {'K', {"F1 CE i 00 25 o o", "F1 CE i 00 28 q", "F1 CE i 00 32 q V", "F1 CE i 00 37 N"}},
    {'G', {"E6 i C1 D3 D0 g", "E6 i C1 D3 D2 g", "E6 i C1 D3 C4 g", "E6 i C1 D3 g"}},
    {'g', {"N E7 i 00 E2 D3 i V E2 CC i p"}},
    {'P', {"E8 i N F1 C9 i t u E2 C9 i p"}},
    {'u', {"08", "10", "13", "14"}},
    {'Q', {"E5 q", "E2 D0 01 p", "F7 q ED 03 01 02 03", "ED 81 F0 rrrrrrrrrrrrrrrr"}},
    // R a type record, y a definition, z a reference that may be a definition, m members.
    {'R', {"F0 i N F2 82 01 q CE i y", "F0 i N F2 82 01 q CE i y", "F0 i N F2 82 01 q CE i t"}},
    {'y', {"j", "'S' q m 00", "'S' q m 00", "'g' o q 10", "'g' o V 10", "'U' q m 00"}},
    {'j',
     {"'x' V 00 00 z 84 FF FF FF FF 00", "'x' q 00 00 z 02 z z 00", "'Z' z V", "'n' 03 z V",
      "'O' z", "'P' z", "'N' 00 q n'RED' V n'BLUE' 01 00", "'T' t", "'t' t", "'Q' q z", "'Q' V z"}},
    {'z', {"t", "t", "t", "y"}},
    {'m', {"", "N z q m", "N z q m", "N z V m"}},
    // M a module: of a compiler, with types, scopes and lines, or of an assembler.
    {'M',
     {"F8 01 00 n'M' R F9 F8 03 00 n'M' O", "F8 01 00 n'' R F9 F8 03 00 n'' O",
      "F8 0A 00 N F8 0B 00 00 q 01 J F9 00 F9"}},
    {'O', {"H Y x T Y x F9 F8 05 00 n'd/m.c' F0 i 00 l F9"}},
    // H the head of a function, h of an inner one, T the end.
    {'H', {"h", "F8 04 00 N q t p"}},
    {'h', {"F8 06 00 N q t p"}},
    {'T', {"F9 p"}},
    // What may stand X in a compiled module, S in a function, Z in an assembled module.
    {'X', {"S", "S", "H Y x T"}},
    {'S', {"x", "x", "F1 CE i 00 3F 3B 00", "h Y T", "Y x", "Y x"}},
    {'Z', {"S", "J"}},
    // Y a symbol, I a value of it, x lifetimes.
    {'Y', {"F0 i N F1 CE i t U"}},
    {'U',
     {"01 V", "01 V", "02 V", "03 V I", "03 V I", "05 I", "08 I", "08 I", "0A V 00",
      "0C 01 02 o 04 05 I", "10 00 o V I I", "13 q o I", "13 I", "W 32 01 I"}},
    {'W', {"3E", "3F", "40"}},
    {'I', {"E2 CE i p", "E2 CE i p", "E2 CE i V"}},
    {'x',
     {"", "F0 i 00 F1 CE i 00 3F 46 03 k x", "F0 i 00 F1 CE i 00 3F 46 04 k E2 CE i o x",
      "F0 i 00 F1 CE i 00 3F 46 03 k x"}},
    {'k', {"E2 CE i 82 02 q E2 CE i L E2 CE i q"}},
    {'L', {"01", "02", "03", "09", "0A", "0B"}},
    // J a line of an assembled module, l lines and stack points behind an NN record.
    {'J', {"F0 i 00 F1 CE i 00 07 V 00 E2 CE i p"}},
    {'l', {"", "s l", "s l", "s l"}},
    {'s',
     {"F1 CE i 00 07 V 00 E2 CE i p", "F1 CE i 00 07 V 00 E2 CE i p",
      "F1 CE i 00 40 33 02 E2 CE i p E2 CE i q"}},
};

// The pattern without letters.
std::string Expanded(Random& random, std::string_view pattern, const char* index) {
    std::string text;
    bool quoted = false;
    for (const char c : pattern) {
        if (c == '\'') quoted = !quoted;
        const auto patterns = quoted ? PATTERNS.end() : PATTERNS.find(c);
        if (patterns != PATTERNS.end())
            text +=
                Expanded(random, patterns->second[Below(random, patterns->second.size())], index);
        else if (c == 'i' && !quoted)
            text += index;
        else
            text += c;
    }
    return text;
}

}  // namespace

builder::Bytes Grow(Random& random, std::string_view pattern, uint32_t index) {
    char hex[16];
    std::snprintf(hex, sizeof hex, index < 0x80 ? "%02X" : "84%08X", index);
    return builder::Hex(Expanded(random, pattern, hex));
}

}  // namespace scan695::fuzz
