// The entries of types.
#include <algorithm>
#include <iterator>
#include <string>

#include "dwarf/program.h"
#include "dwarf/type_fields.h"
#include "dwarf/types.h"
#include "inspector/lookup.h"
#include "inspector/names.h"

namespace scan695::dwarf {

namespace {

struct BasicName {
    const char* name;
    Encoding encoding;
};

// By FST type index, from 1 on.
constexpr BasicName BASIC_NAMES[] = {
    {"unsigned char", ATE_UNSIGNED_CHAR},
    {"char", ATE_SIGNED_CHAR},
    {"unsigned short", ATE_UNSIGNED},
    {"short", ATE_SIGNED},
    {"unsigned int", ATE_UNSIGNED},
    {"int", ATE_SIGNED},
    {"unsigned long", ATE_UNSIGNED},
    {"long", ATE_SIGNED},
    {"float", ATE_FLOAT},
    {"double", ATE_FLOAT},
    {"long double", ATE_FLOAT},
    {"bit", ATE_BOOLEAN},
};

void BeginBasic(EntryWriter& writer, const BasicName& basic, uint32_t size) {
    writer.Begin(TAG_BASE_TYPE);
    writer.Name(basic.name);
    writer.Byte(AT_ENCODING, basic.encoding);
    writer.Number(AT_BYTE_SIZE, size);
}

void AddBits(EntryWriter& writer, uint64_t width, uint64_t offset) {
    writer.Number(AT_BIT_SIZE, width);
    writer.Number(AT_DATA_BIT_OFFSET, offset);
}

// The name of what stands in for a type that never came, or that would lead back to itself.
std::string DeclarationName(uint32_t type_index) {
    return IsTypeMarker(type_index) ? "unresolved_" + std::to_string(type_index & ~TYPE_MARKER_BIT)
                                    : "type_" + std::to_string(type_index);
}

}  // namespace

void WriteParameters(EntryWriter& writer, Types& types, uint32_t record,
                     const std::vector<FIELDINFO>& parameters) {
    for (uint32_t i = 0; i < parameters.size(); ++i) {
        writer.Begin(TAG_FORMAL_PARAMETER);
        writer.Type(types.At({record, i + 1}, parameters[i].type_index));
        writer.End(false);
    }
}

void Types::Write(EntryWriter& writer) {
    const size_t begin = writer.BeginUnit();
    writer.Begin(TAG_COMPILE_UNIT);
    writer.Name("(types)");
    writer.Text(AT_PRODUCER, PRODUCER);
    writer.Word(AT_LANGUAGE, LANG_C89);
    const bool has_types = records_ != 0 || !extras_.empty();
    writer.End(has_types);
    for (uint32_t record = 0; record < records_; ++record) {
        offsets_.push_back(Size32(writer.bytes()));
        WriteRecord(writer, record,
                    *inspector::ReadEntry<TYPEINFO>(fst_, inspector::TYPES, record));
    }
    // These ask for others.
    for (size_t i = 0; i < extras_.size(); ++i) {
        offsets_.push_back(Size32(writer.bytes()));
        const Extra extra = extras_[i];
        WriteExtra(writer, extra);
    }
    if (has_types) writer.EndList();
    writer.EndUnit(begin);
}

void Types::WriteRecord(EntryWriter& writer, uint32_t record, const TYPEINFO& type) {
    switch (type.type_tag) {
        case TAG_POINTER:
            writer.Begin(TAG_POINTER_TYPE);
            writer.Byte(AT_BYTE_SIZE, type.u.pointer.ptr_size);
            if (const auto memory = MemoryOf(type.u.pointer.type_index))
                writer.Byte(AT_ADDRESS_CLASS, *memory);
            writer.Type(At({record, 0}, type.u.pointer.type_index));
            return writer.End(false);
        case TAG_ARRAY:
            return WriteArray(writer, record, type);
        case TAG_STRUCT:
        case TAG_UNION:
            return WriteComposite(writer, record, type);
        case TAG_FUNCTION:
            return WriteFunction(writer, record, type);
        case TAG_ENUMERATION:
            return WriteEnumeration(writer, type);
        case TAG_NONE:
        case TAG_ATTRIBUTE:
        case TAG_BITFIELD:
            return;  // attributes and bitfields show where they are used
    }
}

void Types::WriteArray(EntryWriter& writer, uint32_t record, const TYPEINFO& type) {
    writer.Begin(TAG_ARRAY_TYPE);
    writer.Type(At({record, 0}, type.u.array.type_index));
    writer.End(true);
    writer.Begin(TAG_SUBRANGE_TYPE);
    if (type.u.array.nof_elem != 0)  // otherwise of open size
        writer.Number(AT_UPPER_BOUND, type.u.array.nof_elem - 1);
    writer.End(false);
    writer.EndList();
}

void Types::WriteComposite(EntryWriter& writer, uint32_t record, const TYPEINFO& type) {
    const std::vector<FIELDINFO> members = FieldsOf(fst_, type);
    writer.Begin(type.type_tag == TAG_STRUCT ? TAG_STRUCTURE_TYPE : TAG_UNION_TYPE);
    writer.Name(NameOf(fst_, type.u.structunion.name_offs));
    writer.Number(AT_BYTE_SIZE, type.u.structunion.size);
    writer.End(!members.empty());
    for (uint32_t i = 0; i < members.size(); ++i) WriteMember(writer, {record, i + 1}, members[i]);
    if (!members.empty()) writer.EndList();
}

void Types::WriteMember(EntryWriter& writer, const TypeEdge& edge, const FIELDINFO& field) {
    writer.Begin(TAG_MEMBER);
    writer.Name(NameOf(fst_, field.name_offs));
    const auto found = inspector::FindType(fst_, field.type_index);
    if (found && found->type.type_tag == TAG_BITFIELD && found->type.u.bits.nof_bits > 0) {
        const auto& bits = found->type.u.bits;
        const int64_t first = int64_t{8} * field.value + bits.displacement;
        writer.Type(Of(bits.type_index));
        AddBits(writer, static_cast<uint64_t>(bits.nof_bits),
                static_cast<uint64_t>(std::max<int64_t>(first, 0)));
    } else {
        writer.Type(At(edge, field.type_index));
        writer.Number(AT_DATA_MEMBER_LOCATION, field.value);
    }
    writer.End(false);
}

void Types::WriteEnumeration(EntryWriter& writer, const TYPEINFO& type) {
    const std::vector<FIELDINFO> items = FieldsOf(fst_, type);
    writer.Begin(TAG_ENUMERATION_TYPE);
    writer.Name(NameOf(fst_, type.u.enumeration.name_offs));
    writer.Number(AT_BYTE_SIZE, BasicSize(type.u.enumeration.type_index));
    writer.Type(Of(type.u.enumeration.type_index));
    writer.End(!items.empty());
    for (const FIELDINFO& item : items) {
        writer.Begin(TAG_ENUMERATOR);
        writer.Name(NameOf(fst_, item.name_offs));
        writer.Signed(AT_CONST_VALUE, static_cast<int32_t>(item.value));
        writer.End(false);
    }
    if (!items.empty()) writer.EndList();
}

void Types::WriteFunction(EntryWriter& writer, uint32_t record, const TYPEINFO& type) {
    const std::vector<FIELDINFO> parameters = FieldsOf(fst_, type);
    writer.Begin(TAG_SUBROUTINE_TYPE);
    writer.Type(At({record, 0}, type.u.function.type_index));
    if (!parameters.empty()) writer.Flag(AT_PROTOTYPED);
    writer.End(!parameters.empty());
    WriteParameters(writer, *this, record, parameters);
    if (!parameters.empty()) writer.EndList();
}

void Types::WriteExtra(EntryWriter& writer, const Extra& extra) {
    switch (extra.kind) {
        case BASIC:
            return WriteBasic(writer, extra.number);
        case BIT:
            BeginBasic(writer, BASIC_NAMES[TYPE_BIT - 1], 1);
            AddBits(writer, 1, extra.number);
            return writer.End(false);
        case BITFIELD: {
            const auto type = inspector::ReadEntry<TYPEINFO>(fst_, inspector::TYPES, extra.number);
            const auto& bits = type->u.bits;
            const bool is_basic = bits.type_index >= TYPE_UCHAR && bits.type_index <= TYPE_LONG;
            const uint32_t unit = is_basic ? bits.type_index : TYPE_ULONG;
            BeginBasic(writer, BASIC_NAMES[unit - 1], BasicSize(unit));
            AddBits(writer, static_cast<uint8_t>(bits.nof_bits),
                    static_cast<uint8_t>(bits.displacement));
            return writer.End(false);
        }
        case DECLARATION:
            writer.Begin(TAG_STRUCTURE_TYPE);
            writer.Name(DeclarationName(extra.number));
            writer.Flag(AT_DECLARATION);
            return writer.End(false);
    }
}

void Types::WriteBasic(EntryWriter& writer, uint32_t type_index) {
    if (type_index <= std::size(BASIC_NAMES)) {
        BeginBasic(writer, BASIC_NAMES[type_index - 1], BasicSize(type_index));
    } else {
        writer.Begin(TAG_UNSPECIFIED_TYPE);
        writer.Name(inspector::BasicTypeWord(type_index));
    }
    writer.End(false);
}

}  // namespace scan695::dwarf
