// Definitions of structs and unions. The member list: names, each with a type and an offset, closed
// by a zero byte or by a byte of 80 or more, which stays for the next reader.
#include <memory>

#include "report/report.h"
#include "store/tables.h"
#include "types/bitfields.h"
#include "types/definitions.h"
#include "types/members.h"

namespace scan695 {

namespace {

void ScanMembers(OpenStruct& open) {
    Trace("ScanMembers()...\n");
    ResetPlacement();
    while (ReadName(open.name, SYMBOL_NAME_SIZE) != 0) {
        Trace("Elem%u: name=%s, ", open.members.Count(), open.name);
        ReadMember(open, ScanType(0, 1, open.name));
    }
}

uint32_t AppendStruct(const Definition& definition, OpenStruct& open) {
    const StoredMembers list = StoreMembers(open);
    Trace("End ScanMembers(), nof_elem=%u\n", open.members.Count());
    const bool is_struct = definition.letter == 'S' && list.is_struct;
    const uint32_t number = definition.TakeNumber();
    open.record = {};
    open.record.type_tag = is_struct ? TAG_STRUCT : TAG_UNION;
    open.record.u.structunion.name_offs = StoreName(CutName(definition.name));
    open.record.u.structunion.size = open.size;
    open.record.u.structunion.field_offs = list.field_offs;
    open.record.u.structunion.nof_elem = static_cast<uint16_t>(open.members.Count());
    AppendType(open.record, number);
    Trace("%s(%x)=%u \"%s\", nof_elem=%u, size=%u\n", is_struct ? "STRUCT" : "UNION",
          definition.tk_idx, number, definition.name, open.record.u.structunion.nof_elem,
          open.size);
    return number;
}

}  // namespace

uint32_t ScanStructUnion(const Definition& definition) {
    const auto open = std::make_unique<OpenStruct>();
    open->size = NumberOrStop("Invalid struct type encountered at %X\n");
    Trace("%s, name=%s, size=%u Bytes\n", definition.letter == 'U' ? "U union" : "S struct",
          definition.name, open->size);
    Types.BfParentSize = open->size;
    ScanMembers(*open);
    return AppendStruct(definition, *open);
}

}  // namespace scan695
