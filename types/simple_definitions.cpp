// Definitions over one other type: arrays, pointers, attributes, other names.
#include "input/input_state.h"
#include "input/processor.h"
#include "report/report.h"
#include "store/tables.h"
#include "types/cvt_type.h"
#include "types/definitions.h"

namespace scan695 {

namespace {

constexpr uint32_t POINTER_KIND = 3;  // the one kind of n that tools write
constexpr uint8_t SMALL_POINTER = 1;  // values of a pointer's spec
constexpr uint8_t LARGE_POINTER = 3;

// The record of an attribute, with the low 8 bits of its value.
TYPEINFO AttributeRecord(uint32_t base, uint32_t value) {
    TYPEINFO record = {};
    record.type_tag = TAG_ATTRIBUTE;
    record.u.pointer.type_index = base;
    record.u.pointer.spec = static_cast<uint8_t>(value);
    return record;
}

// A definition without a number of its own: enters the name in the TkAliasMap.
uint32_t AliasTo(const Definition& definition, uint32_t fst_ti) {
    Types.Aliases.Add(definition.tk_idx, fst_ti);
    return fst_ti;
}

void TraceTypedef(const Definition& definition, const char* kind, uint32_t target,
                  uint32_t fst_ti) {
    if (definition.letter == 'T')
        Trace("%s T TYPEDEF %u, name=%s assigned as %u (fst_ti=%u)\n", kind, definition.tk_idx,
              definition.name, target, fst_ti);
    else
        Trace("%s t TYPEDEF %x, name=%s assigned as %x (fst_ti=%u)\n", kind, definition.tk_idx,
              definition.name, target, fst_ti);
}

// A typedef of a compound type gets a copy of the target's record. It cannot wait for a target that
// is still to come: its number then stays without a record.
uint32_t CopyTarget(const Definition& definition, uint32_t target) {
    const uint32_t source = Types.Map.Find(target);
    TraceTypedef(definition, "Cmplx", target, source);
    const uint32_t number = definition.TakeNumber();
    if (IsTypeMarker(source)) {
        PrintLine("WARNING: Debug record for type %s corrupted. Type ignored.\n", definition.name);
        return number;
    }
    TYPEINFO record = {};
    if (ReadRecord(Store.TypeTable, source - FIRST_TYPE_INDEX, record) == 0) return number;
    return AppendType(record, number);
}

}  // namespace

uint32_t ScanArray(const Definition& definition) {
    const uint32_t element = definition.ScanNested();
    const uint32_t upper_bound = NumberOrStop("Invalid C array type encountered at %X\n");
    const uint32_t number = definition.TakeNumber();
    TYPEINFO record = {};
    record.type_tag = TAG_ARRAY;
    record.u.array.type_index = element;
    record.u.array.nof_elem = upper_bound + 1;
    record.u.array.size = TypeSize(element) * record.u.array.nof_elem;
    AppendType(record, number);
    Trace("ARRAY(%x)=%u of %u, nof_elem=%u, size=%u\n", definition.tk_idx, number, element,
          record.u.array.nof_elem, record.u.array.size);
    return number;
}

uint32_t ScanPointerAttribute(const Definition& definition) {
    const uint32_t kind = NumberOrStop("Invalid N qualifier encountered at %X\n");
    if (kind != POINTER_KIND) Trace("**** Unexpected n pointer qualifier kind=%u\n", kind);
    const uint32_t base = definition.ScanNested();
    const uint32_t lex_level = NumberOrStop("Invalid pointer type encountered at %X\n");
    Trace("n pointer attrib: base_type=%u, qualifier_type=%u, lex_level=%x\n", base, kind,
          lex_level);
    const uint32_t number = definition.TakeNumber();
    TYPEINFO record = AttributeRecord(base, lex_level);
    AppendType(record, number);
    Trace("N ATTRIBUTE(%x)=%u to %u, attrib=%x\n", definition.tk_idx, number, base,
          record.u.pointer.spec);
    return number;
}

uint32_t ScanQualifier(const Definition& definition) {
    const uint32_t qualifier = NumberOrStop("Invalid Q qualifier encountered at %X\n");
    const uint32_t base = definition.ScanNested();
    Trace("Q attrib: base_type=%u, qualifier_type=%u\n", base, qualifier);
    const uint32_t number = definition.TakeNumber();
    TYPEINFO record = AttributeRecord(base, qualifier);
    AppendType(record, number);
    Trace("Q ATTRIBUTE(%x)=%u to %u, attrib=%x\n", definition.tk_idx, number, base,
          record.u.pointer.spec);
    return number;
}

uint32_t ScanPointer(const Definition& definition) {
    const bool large = definition.letter == 'P';
    const uint32_t target = definition.ScanNested();
    const uint32_t number = definition.TakeNumber();
    TYPEINFO record = {};
    record.type_tag = TAG_POINTER;
    record.u.pointer.type_index = target;
    record.u.pointer.spec = large ? LARGE_POINTER : SMALL_POINTER;
    record.u.pointer.ptr_size =
        large ? Input.Processor->large_pointer_size : Input.Processor->small_pointer_size;
    AppendType(record, number);
    Trace("%s POINTER(%x)=%u to %u\n", large ? "LARGE" : "SMALL", definition.tk_idx, number,
          target);
    return number;
}

uint32_t ScanTypedef(const Definition& definition) {
    const uint32_t target =
        NumberOrStop(definition.letter == 'T' ? "Invalid 'T' typedef encountered at %X\n"
                                              : "Invalid 't' typedef encountered at %X\n");
    uint32_t fst_ti;
    if (target < FIRST_USER_TYPE) {
        fst_ti = CvtTkType(target);
    } else if (Types.Aliases.Find(target, fst_ti) != 0) {
        Trace("[%u] %c TYPEDEF %u, name=%s known as fst_ti=%u\n", target,
              static_cast<int>(definition.letter), definition.tk_idx, definition.name, fst_ti);
    } else {
        return CopyTarget(definition, target);
    }
    AliasTo(definition, fst_ti);
    TraceTypedef(definition, "Simpl", target, fst_ti);
    return fst_ti;
}

uint32_t ScanReference(const Definition& definition) {
    const uint32_t fst_ti = AliasTo(definition, CvtTkType(definition.letter));
    Trace("Other Simple type %u, name=%s assigned as %u (fst_ti=%u)\n", definition.tk_idx,
          definition.name, definition.letter, fst_ti);
    return fst_ti;
}

}  // namespace scan695
