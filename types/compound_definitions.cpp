// Definitions with lists: functions, structs and unions, enumerations; and bitfields, which lists
// place.
#include "base/text_case.h"
#include "report/report.h"
#include "store/tables.h"
#include "types/bitfields.h"
#include "types/definitions.h"
#include "types/enum_items.h"
#include "types/field_list.h"
#include "types/members.h"

namespace scan695 {

namespace {

constexpr const char* INVALID_FUNCTION = "Invalid function type encountered at %X\n";
constexpr uint32_t NO_PARAMETERS = 0xFFFFFFFF;

// Bits of a function's attr, and what its record makes of them.
constexpr uint32_t ATTR_02 = 0x02;
constexpr uint32_t ATTR_20 = 0x20;
constexpr uint8_t SPEC_02 = 0x02;
constexpr uint8_t SPEC_08 = 0x08;

uint8_t FunctionSpec(uint32_t attr) {
    return static_cast<uint8_t>(((attr & ATTR_02) != 0 ? SPEC_02 : 0) |
                                ((attr & ATTR_20) != 0 ? SPEC_08 : 0));
}

// Each parameter takes a byte at least.
FieldList ScanParameters(const Definition& definition, uint32_t count) {
    if (count > BytesLeft()) ReportAndStop(ERROR_NO_MEMORY);
    FieldList parameters;
    for (uint32_t i = 0; i < count; ++i) {
        FIELDINFO parameter = {};
        parameter.type_index = definition.ScanNested();
        Trace("x function parm%d type=%u\n", static_cast<int32_t>(i), parameter.type_index);
        parameters.Add(parameter);
    }
    return parameters;
}

// The basic type that holds an enumeration, by its size mark.
uint32_t EnumerationType(uint32_t size) {
    switch (size) {
        case 1:
            return TYPE_CHAR;
        case 2:
            return TYPE_SHORT;
        case 4:
            return TYPE_LONG;
        default:
            return TYPE_INT;
    }
}

}  // namespace

// The number is taken before the parameters: one that defines a type has a higher number and is
// appended first.
uint32_t ScanFunctionType(const Definition& definition) {
    const uint32_t attr = NumberOrStop(INVALID_FUNCTION);
    const uint32_t frame_type = NumberOrStop(INVALID_FUNCTION);
    const uint32_t push_mask = NumberOrStop(INVALID_FUNCTION);
    const uint32_t return_type = definition.ScanNested();
    const uint32_t number = definition.TakeNumber();
    const uint32_t nof_parms = NumberOrStop(INVALID_FUNCTION);
    Trace("x function: attr=%x, frame_type=%u, push_mask=%x, nof_parms=%d\n", attr, frame_type,
          push_mask, static_cast<int32_t>(nof_parms));
    const FieldList parameters =
        ScanParameters(definition, nof_parms == NO_PARAMETERS ? 0 : nof_parms);
    const uint32_t level = NumberOrStop(INVALID_FUNCTION);
    const uint32_t father = OptionalNumber();
    Trace("  function nesting level=%u, function father=%u\n", level, father);

    TYPEINFO record = {};
    record.type_tag = TAG_FUNCTION;
    record.u.function.type_index = return_type;
    record.u.function.nof_params = static_cast<uint8_t>(parameters.Count());
    record.u.function.params_offset = parameters.Store();
    record.u.function.spec = FunctionSpec(attr);
    AppendType(record, number);
    Trace("FUNCTION(%x)=%u ret_ti=%u, nof_parms=%u\n", definition.tk_idx, number, return_type,
          record.u.function.nof_params);
    return number;
}

uint32_t ScanStructUnion(const Definition& definition) {
    const uint32_t size = NumberOrStop("Invalid struct type encountered at %X\n");
    Trace("%s, name=%s, size=%u Bytes\n", definition.letter == 'U' ? "U union" : "S struct",
          definition.name, size);
    Types.BfParentSize = size;
    const MemberList members = ScanMembers();
    const bool is_struct = members.is_struct && definition.letter == 'S';
    const uint32_t number = definition.TakeNumber();

    TYPEINFO record = {};
    record.type_tag = is_struct ? TAG_STRUCT : TAG_UNION;
    record.u.structunion.name_offs = StoreName(definition.name);
    record.u.structunion.size = size;
    record.u.structunion.field_offs = members.field_offs;
    record.u.structunion.nof_elem = static_cast<uint16_t>(members.count);
    AppendType(record, number);
    Trace("%s(%x)=%u \"%s\", nof_elem=%u, size=%u\n", is_struct ? "STRUCT" : "UNION",
          definition.tk_idx, number, definition.name, record.u.structunion.nof_elem, size);
    return number;
}

uint32_t ScanEnumeration(const Definition& definition) {
    Trace("N enumeration, name=%s\n", definition.name);
    const EnumItems items = ScanEnumItems();
    const uint32_t number = definition.TakeNumber();

    TYPEINFO record = {};
    record.type_tag = TAG_ENUMERATION;
    record.u.enumeration.name_offs = StoreName(definition.name);
    record.u.enumeration.field_offs = items.field_offs;
    record.u.enumeration.nof_elem = items.count;
    record.u.enumeration.type_index = EnumerationType(items.size);
    AppendType(record, number);
    Trace("ENUM(%x)=%u \"%s\", nof_elem=%u\n", definition.tk_idx, number, definition.name,
          items.count);
    return number;
}

// The generic record knows the width of the field only; each member of the type gets a placed copy.
uint32_t ScanBitfield(const Definition& definition) {
    constexpr const char* INVALID = "Invalid bitfield type encountered at %X\n";
    const uint32_t is_signed = NumberOrStop(INVALID);
    const uint32_t width = NumberOrStop(INVALID);
    OptionalNumber();
    if (is_signed == 0 && width == 1 && CompareNoCase(definition.name, "bit") == 0) {
        Types.Aliases.Add(definition.tk_idx, TYPE_BIT);
        Trace("BIT(%x) defined\n", definition.tk_idx);
        return TYPE_BIT;
    }
    const uint32_t number = definition.TakeNumber();
    TYPEINFO record = {};
    record.type_tag = TAG_BITFIELD;
    record.u.bits.nof_bits = static_cast<int8_t>(width);
    record.u.bits.type_index = is_signed != 0 ? TYPE_LONG : TYPE_ULONG;
    AppendType(record, number);
    Trace("g BITFIELD(%x)=%u nof_bits=%u, in %s base type\n", definition.tk_idx, number,
          width & 0xFF, is_signed != 0 ? "signed" : "unsigned");
    if (Types.BitfieldsPending != 0) ResolveStructureBitfields(Types.BitfieldsStruct);
    return number;
}

}  // namespace scan695
