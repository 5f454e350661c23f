#include "stf/stf_types.h"

#include <cstdio>

#include "report/report.h"
#include "stf/stf_stream.h"
#include "stf/type_words.h"

namespace scan695 {

namespace {

using Variant = TYPEINFO::Variant;

// A signed byte of the record, as text shows it.
uint32_t SignExtended(uint8_t byte) {
    return static_cast<uint32_t>(static_cast<int32_t>(static_cast<int8_t>(byte)));
}

// The comment lines of DebugMode, one function for each variant.
void CommentFunction(const Variant::Function& u) {
    outHex("// ti->u.function.type_index", u.type_index);
    outHex("// ti->u.function.spec", u.spec);
    outHex("// ti->u.function.nof_params", u.nof_params);
    outHex("// ti->u.function.params_offset", u.params_offset);
    outHex("// ti->u.function.return_offset", u.return_offset);
}

void CommentArray(const Variant::Array& u) {
    outHex("// ti->u.array.size", u.size);
    outHex("// ti->u.array.nof_elem", u.nof_elem);
    outHex("// ti->u.array.type_index", u.type_index);
}

void CommentPointer(const Variant::Pointer& u) {
    outHex("// ti->u.pointer.type_index", u.type_index);
    outHex("// ti->u.pointer.spec", u.spec);
    outHex("// ti->u.pointer.ptr_size", u.ptr_size);
    outHex("// ti->u.pointer.base", u.base);
}

void CommentStructUnion(const Variant::StructUnion& u) {
    outHex("// ti->u.structunion.name_offs", u.name_offs);
    outHex("// ti->u.structunion.size", u.size);
    outHex("// ti->u.structunion.field_offs", u.field_offs);
    outHex("// ti->u.structunion.nof_elem", u.nof_elem);
}

void CommentEnumeration(const Variant::Enumeration& u) {
    outHex("// ti->u.enumeration.name_offs", u.name_offs);
    outHex("// ti->u.enumeration.field_offs", u.field_offs);
    outHex("// ti->u.enumeration.nof_elem", u.nof_elem);
    outHex("// ti->u.enumeration.type_index", u.type_index);
}

void CommentBits(const Variant::Bits& u) {
    outHex("// ti->u.bits.displacement", SignExtended(static_cast<uint8_t>(u.displacement)));
    outHex("// ti->u.bits.nof_bits", SignExtended(static_cast<uint8_t>(u.nof_bits)));
    outHex("// ti->u.bits.type_index", u.type_index);
}

void CommentRecord(const TYPEINFO& record) {
    outHex("// ti->here_type_index", record.here_type_index);
    outHex("// ti->type_tag", record.type_tag);
    switch (record.type_tag) {
        case TAG_FUNCTION:
            return CommentFunction(record.u.function);
        case TAG_ARRAY:
            return CommentArray(record.u.array);
        case TAG_POINTER:
        case TAG_ATTRIBUTE:
            return CommentPointer(record.u.pointer);
        case TAG_STRUCT:
        case TAG_UNION:
            return CommentStructUnion(record.u.structunion);
        case TAG_ENUMERATION:
            return CommentEnumeration(record.u.enumeration);
        case TAG_BITFIELD:
            return CommentBits(record.u.bits);
        case TAG_NONE:
            return;
    }
}

void BeginType(uint32_t number, const char* kind) {
    outBegin("Type", static_cast<int32_t>(number));
    outWord("kind", kind);
}

void outUnsigned(const char* key, uint32_t value) {
    outDec(key, static_cast<int32_t>(value));
}

// The number of members and the first of them, which stand in front of the record.
void outMembers(uint32_t count) {
    outUnsigned("count", count);
    if (count != 0) outRef("info", "Member", Stf.MemberCounter - static_cast<int32_t>(count));
}

void outFunction(uint32_t number, const Variant::Function& u) {
    BeginType(number, "function");
    outType("type", u.type_index);
    outEnd();
}

void outArray(uint32_t number, const Variant::Array& u) {
    BeginType(number, "array");
    outUnsigned("size", u.size);
    outUnsigned("count", u.nof_elem);
    outType("type", u.type_index);
    outEnd();
}

void outPointer(uint32_t number, const Variant::Pointer& u) {
    BeginType(number, "pointer");
    outUnsigned("size", u.ptr_size);
    outType("type", IsTypeMarker(u.type_index) ? uint32_t{TYPE_VOID} : u.type_index);
    outEnd();
}

// An attribute reads as a placeholder; its target shows in the comment and in references behind it.
void outAttribute(uint32_t number, const Variant::Pointer& u) {
    outBegin("Type", static_cast<int32_t>(number));
    char text[64];
    std::snprintf(text, sizeof text, "Attrib=%02x to type=%u", SignExtended(u.spec), u.type_index);
    outComment(text);
    AddTypeAlias(number, IsTypeMarker(u.type_index) ? uint32_t{TYPE_UCHAR} : u.type_index);
    outWord("kind", "uchar");
    outUnsigned("size", 0);
    outWord("type", "uchar");
    outEnd();
}

void outStructUnion(uint32_t number, const char* kind, const Variant::StructUnion& u) {
    outField(u.nof_elem, u.field_offs);
    BeginType(number, kind);
    outName("name", u.name_offs);
    outUnsigned("size", u.size);
    outMembers(u.nof_elem);
    outEnd();
}

uint32_t EnumerationSize(uint32_t type_index) {
    if (type_index == TYPE_CHAR) return 1;
    return type_index == TYPE_SHORT || Stf.C166Flag != 0 ? 2 : 4;
}

void outEnumeration(uint32_t number, const Variant::Enumeration& u) {
    outField(static_cast<int32_t>(u.nof_elem), u.field_offs);
    BeginType(number, "enum");
    outName("name", u.name_offs);
    outType("type", u.type_index);
    outMembers(u.nof_elem);
    outUnsigned("size", EnumerationSize(u.type_index));
    outEnd();
}

void outBitfield(uint32_t number, const Variant::Bits& u) {
    BeginType(number, "bitfield");
    outType("type", u.type_index);
    outDec("size", u.nof_bits);
    outDec("count", u.displacement);
    outDec("info", 0);
    outEnd();
}

}  // namespace

void outTypeRecord(uint32_t number, const TYPEINFO& record) {
    if (Report.DebugMode != 0) CommentRecord(record);
    switch (record.type_tag) {
        case TAG_FUNCTION:
            return outFunction(number, record.u.function);
        case TAG_ARRAY:
            return outArray(number, record.u.array);
        case TAG_POINTER:
            return outPointer(number, record.u.pointer);
        case TAG_ATTRIBUTE:
            return outAttribute(number, record.u.pointer);
        case TAG_STRUCT:
            return outStructUnion(number, "struct", record.u.structunion);
        case TAG_UNION:
            return outStructUnion(number, "union", record.u.structunion);
        case TAG_ENUMERATION:
            return outEnumeration(number, record.u.enumeration);
        case TAG_BITFIELD:
            return outBitfield(number, record.u.bits);
        case TAG_NONE:
            return;
    }
}

}  // namespace scan695
