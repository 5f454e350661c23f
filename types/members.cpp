#include "types/members.h"

#include "report/report.h"
#include "store/tables.h"
#include "types/bitfields.h"
#include "types/type_table.h"
#include "types/update_types.h"

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
    member.type_index = TakeTypeNumber(0);
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

void ReadMember(OpenStruct& open, uint32_t type_index) {
    Trace("tidx=%u, ", type_index);
    open.member = {};
    open.member.type_index = type_index;
    const bool is_bitfield = IsBitfield(type_index, open.record);
    ReadNumber(open.offset);
    if (is_bitfield) {
        PlaceMember(open.record, open.offset, open.group_start, open.member);
    } else {
        Trace("offset=%u\n", open.offset);
        open.member.value = open.offset;
    }
    open.group_start = !is_bitfield;
    open.member.name_offs = StoreName(CutName(open.name));
    open.members.Add(open.member);
}

StoredMembers StoreMembers(const OpenStruct& open) {
    return {open.members.Store(), IsStruct(open.members, !open.group_start)};
}

}  // namespace scan695
