#include "stf/type_words.h"

#include <algorithm>
#include <new>
#include <string_view>

#include "report/report.h"
#include "stf/stf_stream.h"
#include "store/records.h"
#include "store/tables.h"

namespace scan695 {

namespace {

constexpr uint32_t NAME_READ = 80;  // bytes read for a name, which takes 32 at most

constexpr std::string_view BASIC_WORDS[] = {
    "void",     "uchar",  "char",          "ushort",      "short", "uint",   "int",   "ulong",
    "long",     "float",  "double",        "ldouble",     "bit",   "???",    "???",   "???",
    "???",      "???",    "???",           "???",         "???",   "???",    "???",   "???",
    "???",      "???",    "???",           "???",         "???",   "???",    "???",   "???",
    "void",     "...",    "label",         "pointer",     "array", "struct", "union", "bitfield",
    "function", "attrib", "stringliteral", "enumeration",
};
constexpr uint32_t NOF_WORDS = sizeof BASIC_WORDS / sizeof BASIC_WORDS[0];
static_assert(NOF_WORDS == 44);

const TypeAlias* FindTypeAlias(uint32_t number) {
    const std::vector<TypeAlias>& aliases = Stf.TypeAliasTable;
    const auto pair = std::ranges::lower_bound(aliases, number, {}, &TypeAlias::number);
    return pair != aliases.end() && pair->number == number ? &*pair : nullptr;
}

std::string_view BasicWord(uint32_t type_index) {
    return type_index < NOF_WORDS ? BASIC_WORDS[type_index] : "???";
}

}  // namespace

int AddTypeAlias(uint32_t number, uint32_t target) {
    try {
        Stf.TypeAliasTable.push_back({number, target});
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return 1;
}

void FreeTypeAliases() {
    Stf.TypeAliasTable = std::vector<TypeAlias>();
}

void outName(std::string_view key, uint32_t name_offs) {
    if (name_offs == 0) {
        outStr(key, "");
        return;
    }
    char text[NAME_READ + 1] = {};
    if (!Store.FstImage.ReadAt(name_offs, text, NAME_READ)) ReportAndStop("outName SEEK error");
    outStr(key, text);
}

void outType(std::string_view key, uint32_t type_index) {
    uint32_t index = IsTypeMarker(type_index) ? static_cast<uint32_t>(TYPE_INT) : type_index;
    if (index >= FIRST_TYPE_INDEX)
        if (const TypeAlias* alias = FindTypeAlias(index - FIRST_TYPE_INDEX)) index = alias->target;
    if (index < FIRST_TYPE_INDEX)
        outWord(key, BasicWord(index));
    else
        outRef(key, "Type", static_cast<int32_t>(index - FIRST_TYPE_INDEX));
}

void outField(int32_t count, uint32_t field_offs) {
    if (count <= 0 || field_offs == 0) return;
    for (int32_t i = 0; i < count; ++i, field_offs += sizeof(FIELDINFO)) {
        FIELDINFO field = {};
        if (!Store.FstImage.ReadAt(field_offs, &field, sizeof field))
            ReportAndStop("outField seek error");
        outBegin("Member", Stf.MemberCounter);
        outName("name", field.name_offs);
        outDec("value", static_cast<int32_t>(field.value));
        outType("type", field.type_index);
        outEnd();
        ++Stf.MemberCounter;
    }
}

}  // namespace scan695
