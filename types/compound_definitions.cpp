// Definitions of functions, enumerations and bitfields.
#include <memory>

#include "base/text_case.h"
#include "report/report.h"
#include "store/tables.h"
#include "types/bitfields.h"
#include "types/definitions.h"
#include "types/enum_items.h"
#include "types/field_list.h"

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

// A function under construction, on the heap as every definition that holds others.
struct OpenFunction {
    uint32_t attr = 0;
    uint32_t frame_type = 0;
    uint32_t push_mask = 0;
    uint32_t return_type = 0;
    uint32_t number = 0;
    FieldList parameters;
    FIELDINFO parameter = {};
    TYPEINFO record = {};
};

void ReadFunctionHead(OpenFunction& open) {
    open.attr = NumberOrStop(INVALID_FUNCTION);
    open.frame_type = NumberOrStop(INVALID_FUNCTION);
    open.push_mask = NumberOrStop(INVALID_FUNCTION);
}

// The number of parameters, each of which takes a byte at least.
uint32_t ReadParameterCount(const OpenFunction& open) {
    const uint32_t count = NumberOrStop(INVALID_FUNCTION);
    Trace("x function: attr=%x, frame_type=%u, push_mask=%x, nof_parms=%d\n", open.attr,
          open.frame_type, open.push_mask, static_cast<int32_t>(count));
    if (count == NO_PARAMETERS) return 0;
    if (count > BytesLeft()) ReportAndStop(ERROR_NO_MEMORY);
    return count;
}

void AddParameter(OpenFunction& open, uint32_t type_index) {
    Trace("x function parm%d type=%u\n", static_cast<int32_t>(open.parameters.Count()), type_index);
    open.parameter.type_index = type_index;
    open.parameters.Add(open.parameter);
}

uint32_t AppendFunction(const Definition& definition, OpenFunction& open) {
    const uint32_t level = NumberOrStop(INVALID_FUNCTION);
    const uint32_t father = OptionalNumber();
    Trace("  function nesting level=%u, function father=%u\n", level, father);
    open.record.type_tag = TAG_FUNCTION;
    open.record.u.function.type_index = open.return_type;
    open.record.u.function.nof_params = static_cast<uint8_t>(open.parameters.Count());
    open.record.u.function.params_offset = open.parameters.Store();
    open.record.u.function.spec = FunctionSpec(open.attr);
    AppendType(open.record, open.number);
    Trace("FUNCTION(%x)=%u ret_ti=%u, nof_parms=%u\n", definition.tk_idx, open.number,
          open.return_type, open.record.u.function.nof_params);
    return open.number;
}

}  // namespace

// The number is taken before the parameters: one that defines a type has a higher number and is
// appended first.
uint32_t ScanFunctionType(const Definition& definition) {
    const auto open = std::make_unique<OpenFunction>();
    ReadFunctionHead(*open);
    open->return_type = definition.ScanNested();
    open->number = definition.TakeNumber();
    for (uint32_t left = ReadParameterCount(*open); left > 0; --left)
        AddParameter(*open, definition.ScanNested());
    return AppendFunction(definition, *open);
}

uint32_t ScanEnumeration(const Definition& definition) {
    Trace("N enumeration, name=%s\n", definition.name);
    const EnumItems items = ScanEnumItems();
    const uint32_t number = definition.TakeNumber();

    TYPEINFO record = {};
    record.type_tag = TAG_ENUMERATION;
    record.u.enumeration.name_offs = StoreName(CutName(definition.name));
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
    if (Types.BitfieldsPending) ResolveStructureBitfields(Types.BitfieldsStruct);
    return number;
}

}  // namespace scan695
