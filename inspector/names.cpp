#include "inspector/names.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace scan695::inspector {

namespace {

constexpr int MAX_TYPE_DEPTH = 8;

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

constexpr Word TYPE_TAGS[] = {{TAG_POINTER, "pointer"},   {TAG_ARRAY, "array"},
                              {TAG_STRUCT, "struct"},     {TAG_UNION, "union"},
                              {TAG_BITFIELD, "bitfield"}, {TAG_FUNCTION, "function"},
                              {TAG_ATTRIBUTE, "attrib"},  {TAG_ENUMERATION, "enumeration"}};

constexpr Word BASIC_TYPES[] = {{TYPE_VOID, "void"},
                                {TYPE_UCHAR, "uchar"},
                                {TYPE_CHAR, "char"},
                                {TYPE_USHORT, "ushort"},
                                {TYPE_SHORT, "short"},
                                {TYPE_UINT, "uint"},
                                {TYPE_INT, "int"},
                                {TYPE_ULONG, "ulong"},
                                {TYPE_LONG, "long"},
                                {TYPE_FLOAT, "float"},
                                {TYPE_DOUBLE, "double"},
                                {TYPE_LDOUBLE, "ldouble"},
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

std::string Hex(uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", number);
    return text;
}

std::string Describe(const Fst& fst, uint32_t type_index, int depth);

std::string DescribeRecord(const Fst& fst, const TYPEINFO& type, int depth) {
    const auto rest = [&](uint32_t index) { return Describe(fst, index, depth + 1); };
    std::string word = TypeTagWord(type.type_tag);
    switch (type.type_tag) {
        case TAG_POINTER:
            return "pointer to " + rest(type.u.pointer.type_index);
        case TAG_ATTRIBUTE:
            return "attrib " + Hex(type.u.pointer.spec) + " of " + rest(type.u.pointer.type_index);
        case TAG_ARRAY:
            return "array[" + std::to_string(type.u.array.nof_elem) + "] of " +
                   rest(type.u.array.type_index);
        case TAG_FUNCTION:
            return "function returning " + rest(type.u.function.type_index);
        case TAG_BITFIELD:
            return "bitfield:" + std::to_string(type.u.bits.nof_bits) + " in " +
                   rest(type.u.bits.type_index);
        case TAG_STRUCT:
        case TAG_UNION:
            return word + " " + NameText(fst, type.u.structunion.name_offs);
        case TAG_ENUMERATION:
            return word + " " + NameText(fst, type.u.enumeration.name_offs);
        default:
            return word;
    }
}

std::string Describe(const Fst& fst, uint32_t type_index, int depth) {
    if (IsTypeMarker(type_index)) {
        return "unresolved " + Hex(type_index & ~TYPE_MARKER_BIT);
    }
    if (type_index < FIRST_TYPE_INDEX) return WordOrNumber(BASIC_TYPES, type_index);
    const auto record = fst.type_records.find(type_index);
    if (record == fst.type_records.end() || depth >= MAX_TYPE_DEPTH) {
        return "type " + std::to_string(type_index);
    }
    const auto type = ReadEntry<TYPEINFO>(fst, TYPES, record->second);
    return type ? DescribeRecord(fst, *type, depth) : "type " + std::to_string(type_index);
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

bool IsBasicType(uint32_t type_index) {
    return Find(BASIC_TYPES, type_index) != nullptr;
}

std::string TypeText(const Fst& fst, uint32_t type_index) {
    return Describe(fst, type_index, 0);
}

std::string NameText(const Fst& fst, uint32_t offset) {
    const auto name = NameAt(fst, offset);
    if (!name) return "<no name at " + Hex(offset) + ">";
    std::string text;
    for (const char c : *name) {
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
