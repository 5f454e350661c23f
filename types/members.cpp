#include "types/members.h"

#include "input/cursor.h"
#include "report/report.h"
#include "types/bitfields.h"
#include "types/definition.h"
#include "types/field_list.h"
#include "types/type_state.h"
#include "types/type_table.h"

namespace scan695 {

namespace {

bool IsBitfield(uint32_t type_index, TYPEINFO& record) {
    if (!IsRecordType(type_index)) return false;
    record = RecordAtPositionOf(type_index);
    return record.type_tag == TAG_BITFIELD;
}

// Gives a bitfield member a record of its own with its place, and sets value and type of the
// member.
void PlaceMember(TYPEINFO& record, uint32_t bit_offset, bool group_start, FIELDINFO& member) {
    Trace("nof_bits=%u, bit displacement=%u\n", static_cast<uint8_t>(record.u.bits.nof_bits),
          bit_offset);
    member.type_index = Types.Map.Add(0);
    member.value = PlaceBitfield(bit_offset, group_start, record);
    AppendType(record, member.type_index);
    Trace("m BITFIELD(0)=%u nof_bits=%u, displ=%u in type=%u\n", member.type_index,
          static_cast<uint8_t>(record.u.bits.nof_bits),
          static_cast<uint8_t>(record.u.bits.displacement), record.u.bits.type_index);
    Trace("offset in struct=%u\n", member.value);
}

// Only the first two offsets and the last member tell a union that is written as a struct.
bool IsStruct(const FieldList& list, bool last_is_bitfield) {
    return list.Count() < 2 || list[0].value != list[1].value || last_is_bitfield;
}

}  // namespace

MemberList ScanMembers() {
    Trace("ScanMembers()...\n");
    ResetPlacement();
    FieldList list;
    char name[SYMBOL_NAME_SIZE] = "";
    uint32_t offset = 0;
    bool group_start = true;  // the last member was no bitfield
    while (ReadName(name, SYMBOL_NAME_SIZE) != 0) {
        Trace("Elem%u: name=%s, ", list.Count(), name);
        FIELDINFO member = {};
        member.type_index = ScanType(0, 1, name);
        Trace("tidx=%u, ", member.type_index);
        TYPEINFO record;
        const bool is_bitfield = IsBitfield(member.type_index, record);
        ReadNumber(offset);
        if (is_bitfield) {
            PlaceMember(record, offset, group_start, member);
        } else {
            Trace("offset=%u\n", offset);
            member.value = offset;
        }
        group_start = !is_bitfield;
        member.name_offs = StoreName(name);
        list.Add(member);
    }
    MemberList members;
    members.count = list.Count();
    members.is_struct = IsStruct(list, !group_start);
    members.field_offs = list.Store();
    if (static_cast<uint16_t>(members.count) > list.StoredCount())
        Types.References.NoteOverlongList(members.field_offs);
    Trace("End ScanMembers(), nof_elem=%u\n", members.count);
    return members;
}

}  // namespace scan695
