#include "stf/stf_symbols.h"

#include <cstdio>
#include <cstring>
#include <span>

#include "report/report.h"
#include "stf/register_names.h"
#include "stf/stf_stream.h"
#include "stf/type_words.h"

namespace scan695 {

namespace {

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Underscores, a letter, then letters, digits and underscores.
bool IsFitName(const char* name) {
    while (*name == '_') ++name;
    if (!IsLetter(*name)) return false;
    while (IsLetter(*name) || IsDigit(*name) || *name == '_') ++name;
    return *name == '\0';
}

void Reject(const char* what, const char* name) {
    StfLine().Text("// REJECTING ").Text(what).Text("SYMBOL ").Text(name).End();
}

// The start-up code of either tool chain, as a public symbol without a type.
bool IsStartSymbol(const char* name, const SYMINFO& record) {
    if (record.type_index != 0 || record.size != 0 || record.module != -1 || record.block != -1)
        return false;
    if (record.storage_class == STORAGE_GLOBAL)
        return Stf.C166Flag != 0 && std::strcmp(name, "_CSTART_TASK") == 0;
    return record.storage_class == STORAGE_STATIC && std::strcmp(name, "START") == 0;
}

void outStartAddress(uint32_t address) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", address);
    outAttrib("STARTPC", text);
}

void outSymbolComments(const SYMINFO& record, std::span<const LOCINFO> locs) {
    outHex("// si->name_offs", record.name_offs);
    outHex("// si->value", record.value);
    outHex("// si->size", record.size);
    outHex("// si->module", static_cast<uint32_t>(record.module));
    outHex("// si->block", static_cast<uint32_t>(record.block));
    outHex("// si->type_index", record.type_index);
    outHex("// si->access_mode", record.access_mode);
    outHex("// si->storage_class", record.storage_class);
    outHex("// si->mem_type", static_cast<uint32_t>(record.mem_type));
    outHex("// si->nof_locs", record.nof_locs);
    outHex("// si->locinfo_offs", record.locinfo_offs);
    for (const LOCINFO& location : locs) {
        outHex("// locp[l].value", location.value);
        outHex("// locp[l].storage_class", location.storage_class);
        outHex("// locp[l].mem_type", static_cast<uint32_t>(location.mem_type));
        outHex("// locp[l].exec_mem_type", location.exec_mem_type);
        outHex("// locp[l].fill", static_cast<uint32_t>(location.fill));
        outHex("// locp[l].beg_address", location.beg_address);
        outHex("// locp[l].end_address", location.end_address);
    }
}

bool IsLocal(const SYMINFO& record) {
    return record.storage_class == STORAGE_AUTO || record.storage_class == STORAGE_REGISTER;
}

// On the C166 family the register's code, with its name for a comment; elsewhere the value as the
// input has it. The line with a comment has no semicolon at its end.
void outRegister(const char* key_and_prefix, uint32_t value) {
    StfLine line;
    line.Text(key_and_prefix);
    if (Stf.C166Flag == 0) {
        line.Hex(value).Char(';').End();
        return;
    }
    char name[REGISTER_NAME_SIZE];
    const uint32_t code = outRegName(value, name);
    line.Hex(code).Text("; // ").Text(name).End();
}

int32_t StackOffset(uint32_t value) {
    return static_cast<int32_t>(value + static_cast<uint32_t>(Stf.StackAdjust));
}

void outRange(const LOCINFO& location) {
    outBegin("Range", Stf.RangeCounter);
    outHex("blkbegin", location.beg_address);
    outHex("blkend", location.end_address);
    if (location.storage_class == STORAGE_REGISTER) {
        outWord("info", "register");
        outRegister("value=", location.value);
    } else {
        outDec("value", StackOffset(location.value));
        outWord("info", "auto");
    }
    outEnd();
    ++Stf.RangeCounter;
}

// The first Range record of the symbol and their number.
void outLocationLines(uint32_t nof_locs) {
    if (nof_locs <= 1) return;
    outRef("location", "Range", Stf.RangeCounter - static_cast<int32_t>(nof_locs));
    outDec("locationCount", static_cast<int32_t>(nof_locs));
}

void outStackAddress(const char* name, uint32_t value) {
    if (Stf.StackAdjust != 0)
        StfLine().Text("// ADJUSTING STACK FOR ").Text(name).Char(' ').Dec(Stf.StackAdjust).End();
    StfLine().Text("address=stack ").Dec(StackOffset(value)).Char(';').End();
}

void outPlace(const char* name, uint8_t storage_class, uint32_t value, uint32_t nof_locs) {
    switch (storage_class) {
        case STORAGE_STATIC:
            outHex("address", value);
            outWord("storageClass", "static");
            break;
        case STORAGE_AUTO:
            outLocationLines(nof_locs);
            outStackAddress(name, value);
            outWord("storageClass", "auto");
            break;
        case STORAGE_REGISTER:
            outLocationLines(nof_locs);
            outRegister("address=reg ", value);
            outWord("storageClass", "register");
            break;
        default:
            outHex("address", value);
            break;
    }
}

}  // namespace

void outSymbol(const char* name, const SYMINFO& record, std::span<const LOCINFO> locs) {
    const auto nof_locs = static_cast<uint32_t>(locs.size());
    if (!IsFitName(name)) return Reject("", name);
    if (IsStartSymbol(name, record)) outStartAddress(record.value);
    if (Report.DebugMode != 0) outSymbolComments(record, locs);
    if (record.type_index == TYPE_VOID && record.storage_class == STORAGE_AUTO)
        return Reject("VOID ", name);
    if (record.storage_class == STORAGE_STATIC && record.mem_type == MEM_UNKNOWN)
        return Reject("Static ", name);

    if (IsLocal(record) && nof_locs > 1)
        for (const LOCINFO& location : locs) outRange(location);
    outBegin("Symbol", Stf.SymbolCounter);
    outName("name", record.name_offs);
    if (IsLocal(record) && nof_locs == 1)
        outPlace(name, locs[0].storage_class, locs[0].value, nof_locs);
    else
        outPlace(name, record.storage_class, record.value, nof_locs);
    outType("type", record.type_index);
    if (record.module >= 0) outRef("module", "Module", record.module);
    if (record.block >= 0) outRef("block", "Block", record.block);
    outEnd();
    ++Stf.SymbolCounter;
}

}  // namespace scan695
