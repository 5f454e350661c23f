#include "inspector/names.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "store/records.h"

namespace scan695::inspector {

namespace {

struct Word {
    uint32_t number;
    const char* text;
};

constexpr Word PROCESSORS[] = {{PROCESSOR_C166_FAMILY, "C166 family"},
                               {PROCESSOR_TRICORE, "TriCore"},
                               {PROCESSOR_C166, "C166"}};

constexpr Word STORAGE_CLASSES[] = {{STORAGE_GLOBAL, "global"},
                                    {STORAGE_STATIC, "static"},
                                    {STORAGE_AUTO, "auto"},
                                    {STORAGE_REGISTER, "register"}};

constexpr Word MEMORIES[] = {{MEM_CODE, "code"},       {1, "memory 1"},
                             {MEM_DATA, "data"},       {3, "memory 3"},
                             {MEM_BIT_LOW, "low bit"}, {MEM_BIT_HIGH, "high bit"},
                             {MEM_UNKNOWN, "unknown"}, {MEM_REGISTER, "register"}};

constexpr Word TYPE_TAGS[] = {{TAG_POINTER, "pointer"},     {TAG_ARRAY, "array"},
                              {TAG_STRUCT, "struct"},       {TAG_UNION, "union"},
                              {TAG_BITFIELD, "bitfield"},   {TAG_FUNCTION, "function"},
                              {TAG_ATTRIBUTE, "attribute"}, {TAG_ENUMERATION, "enumeration"}};

constexpr Word BASIC_TYPES[] = {{TYPE_VOID, "void"},
                                {TYPE_UCHAR, "unsigned char"},
                                {TYPE_CHAR, "char"},
                                {TYPE_USHORT, "unsigned short"},
                                {TYPE_SHORT, "short"},
                                {TYPE_UINT, "unsigned int"},
                                {TYPE_INT, "int"},
                                {TYPE_ULONG, "unsigned long"},
                                {TYPE_LONG, "long"},
                                {TYPE_FLOAT, "float"},
                                {TYPE_DOUBLE, "double"},
                                {TYPE_LDOUBLE, "long double"},
                                {TYPE_BIT, "bit"},
                                {32, "void"},
                                {TYPE_LABEL, "label"},
                                {TYPE_POINTER, "pointer"},
                                {TYPE_STRINGLITERAL, "stringliteral"}};

template <size_t N>
const char* Find(const Word (&words)[N], uint32_t number) {
    const auto* word = std::find_if(std::begin(words), std::end(words),
                                    [&](const Word& entry) { return entry.number == number; });
    return word == std::end(words) ? nullptr : word->text;
}

template <size_t N>
std::string WordOrNumber(const Word (&words)[N], uint32_t number) {
    const char* word = Find(words, number);
    return word != nullptr ? word : "?" + std::to_string(static_cast<int32_t>(number));
}

}  // namespace

std::string ProcessorWord(uint8_t processor) {
    return WordOrNumber(PROCESSORS, processor);
}

std::string MemoryWord(int mem_type) {
    return WordOrNumber(MEMORIES, static_cast<uint32_t>(mem_type));
}

std::string StorageWord(uint8_t storage_class) {
    return WordOrNumber(STORAGE_CLASSES, storage_class);
}

std::string TypeTagWord(uint8_t type_tag) {
    return WordOrNumber(TYPE_TAGS, type_tag);
}

std::string BasicTypeWord(uint32_t type_index) {
    return WordOrNumber(BASIC_TYPES, type_index);
}

bool IsBasicType(uint32_t type_index) {
    return Find(BASIC_TYPES, type_index) != nullptr;
}

std::string RegisterWord(uint8_t processor, uint32_t value) {
    if (processor == PROCESSOR_TRICORE) return "";
    const auto number = [](uint32_t bits) { return std::to_string(bits & 15); };
    const uint32_t low = value >> 1;
    const uint32_t high = value >> 5;
    switch (value >> 12 & 15) {
        case 4:
            return "R" + number(high) + ",R" + number(low);
        case 2:
            return ((value & 1) != 0 ? "RH" : "RL") + number(low);
        default:
            return "R" + number(low);
    }
}

std::string HexText(uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", number);
    return text;
}

std::string Printable(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F || c == '\\') {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02x", byte);
            text += escape;
        } else {
            text += c;
        }
    }
    return text;
}

}  // namespace scan695::inspector
