#include "types/bitfields.h"

#include "input/cursor.h"
#include "input/processor.h"
#include "report/report.h"
#include "store/tables.h"
#include "store/type_records.h"
#include "types/type_fields.h"
#include "types/type_state.h"
#include "types/type_table.h"
#include "types/update_types.h"

namespace scan695 {

namespace {

constexpr uint32_t SHORT_LIST = 256;  // elements that are looked through faster than watched

// The unsigned type in place of a signed field's own; the signed one has the next number.
uint32_t WithSignOf(uint32_t old_type, uint32_t unsigned_type) {
    const bool is_signed = old_type == TYPE_CHAR || old_type == TYPE_SHORT ||
                           old_type == TYPE_INT || old_type == TYPE_LONG;
    return is_signed ? unsigned_type + 1 : unsigned_type;
}

uint32_t PlaceInC166Unit(uint32_t bit_offset, bool new_group, TYPEINFO& record) {
    if (new_group) Types.BfUnitOffset = bit_offset / 8;
    auto& bits = record.u.bits;
    const uint32_t parent = GetBitfieldParent(bits.nof_bits, static_cast<int32_t>(bit_offset));
    bits.type_index = WithSignOf(bits.type_index, parent);
    const uint32_t unit_bits = TypeSize(bits.type_index) * 8;
    bits.displacement = static_cast<int8_t>(unit_bits != 0 ? bit_offset % unit_bits : 0);
    return Types.BfUnitOffset;
}

// The byte offset of the 16-bit word that holds a bit.
int32_t WordOffset(int32_t displacement) {
    return displacement / 16 * 16 / 8;
}

// Distance of a bit from a byte; wraps.
int32_t BitsFrom(int32_t byte_offset, int32_t displacement) {
    return static_cast<int32_t>(static_cast<uint32_t>(displacement) -
                                static_cast<uint32_t>(byte_offset) * 8);
}

uint32_t SpanOf(int32_t first_bit, int32_t nof_bits) {
    return static_cast<uint32_t>(first_bit) + static_cast<uint32_t>(nof_bits);
}

// The smallest unsigned type that holds a span of bits, or void for more than 32.
uint32_t TypeOfSpan(uint32_t span) {
    return span <= 8 ? TYPE_UCHAR : span <= 16 ? TYPE_USHORT : span <= 32 ? TYPE_ULONG : TYPE_VOID;
}

// A field that cannot go to the anchor's byte is measured from the anchor, or from its own 16-bit
// word when that is too far.
int32_t AlignToAnchor(int32_t displacement, int32_t nof_bits, TYPEINFO& record) {
    int32_t offset =
        Types.BfUnitType != 0 ? static_cast<int32_t>(Types.BfUnitOffset) : WordOffset(displacement);
    int32_t first_bit = BitsFrom(offset, displacement);
    uint32_t type = TypeOfSpan(SpanOf(first_bit, nof_bits));
    if (type == TYPE_VOID) {
        offset = WordOffset(displacement);
        first_bit = BitsFrom(offset, displacement);
        type = TypeOfSpan(SpanOf(first_bit, nof_bits));
    }
    if (type == TYPE_VOID) {
        Trace("**** Cannot align bitfield: displ=%d, nof_bits=%d, assuming ULONG\n", displacement,
              nof_bits);
        type = TYPE_ULONG;
    }
    record.u.bits.displacement = static_cast<int8_t>(first_bit);
    record.u.bits.type_index = type;
    return offset;
}

// Places one element of a struct's list, if it is a bitfield.
void ResolveElement(const ReferenceList& list, uint32_t number) {
    FIELDINFO element;
    ReadField(list.ElementOffset(number), element);
    if (!IsRecordType(element.type_index)) {
        Trace("   %2u: offset=%3u, fst_ti=%u ****\n", number, element.value, element.type_index);
        return;
    }
    TYPEINFO record = RecordAtPositionOf(element.type_index);
    const auto& bits = record.u.bits;
    if (record.type_tag != TAG_BITFIELD) {
        Trace("   %2u: not Bitfield type=%u ****\n", number, record.type_tag);
        return;
    }
    Trace("   %2u BITFIELD ti=%u: offset=%3u, nof_bits=%2u, displ=%2u in type=%u\n", number,
          element.type_index, element.value, static_cast<uint8_t>(bits.nof_bits),
          static_cast<uint8_t>(bits.displacement), bits.type_index);
    element.value = PlaceBitfield(element.value, true, record);
    element.type_index = AppendType(record, TakeTypeNumber(0));
    Trace("           new ti=%u: offset=%3u, nof_bits=%2u, displ=%2u in type=%u\n",
          element.type_index, element.value, static_cast<uint8_t>(bits.nof_bits),
          static_cast<uint8_t>(bits.displacement), bits.type_index);
    if (!WriteField(list.ElementOffset(number), element)) ReportAndStop(ERROR_NO_MEMORY);
    NoteWrite(list.ElementOffset(number));
}

}  // namespace

void ResetPlacement() {
    Types.BfUnitOffset = 0;
    Types.BfUnitType = 0;
    Types.BfUnitSize = 0;
}

uint32_t PlaceBitfield(uint32_t bit_offset, bool new_group, TYPEINFO& record) {
    if (Input.Processor->bitfields == BitfieldRule::ANCHOR_BYTES)
        return AlignBitfield(static_cast<int32_t>(bit_offset), record.u.bits.nof_bits, record);
    return PlaceInC166Unit(bit_offset, new_group, record);
}

// Offsets count bytes and are compared as bits, without wrapping: a field at a bit offset of
// 0x80000000 or more is negative and lies in front of the end of any unit.
uint32_t GetBitfieldParent(int32_t nof_bits, int32_t displacement) {
    const auto parent_size = static_cast<int32_t>(Types.BfParentSize);
    const int64_t parent_bits = int64_t{parent_size} * 8;
    if (displacement > parent_bits)
        Trace(
            "**** Bitfield [nof_bits=%d, displacement=%d] does not fit into Parent [size=%d "
            "bits]\n",
            nof_bits, displacement, static_cast<int32_t>(parent_bits));
    const uint32_t unit_end = Types.BfUnitOffset + Types.BfUnitSize;
    if (displacement < int64_t{static_cast<int32_t>(unit_end)} * 8) return Types.BfUnitType;

    Types.BfUnitOffset = unit_end;
    for (const uint32_t type : {TYPE_ULONG, TYPE_USHORT, TYPE_UCHAR, TYPE_UINT}) {
        const uint32_t size = TypeSize(type);
        if (static_cast<int32_t>(size + Types.BfUnitOffset) > parent_size) continue;
        Types.BfUnitSize = size;
        Types.BfUnitType = type;
        return type;
    }
    Types.BfUnitSize = TypeSize(TYPE_UCHAR);
    Types.BfUnitType = TYPE_UCHAR;
    Trace("**** Cannot get type of bitfield parent at %#x, assuming CHAR\n", LastOffset());
    return TYPE_UCHAR;
}

uint32_t AlignBitfield(int32_t displacement, int32_t nof_bits, TYPEINFO& record) {
    auto& bits = record.u.bits;
    const uint32_t old_type = bits.type_index;
    const int32_t byte = displacement / 8;
    const int32_t bit = displacement % 8;
    const bool in_byte = nof_bits <= 8 && SpanOf(bit, nof_bits) <= 8;
    int32_t offset = byte;
    if (in_byte && (Types.BfUnitType == 0 || Types.BfUnitOffset == static_cast<uint32_t>(byte))) {
        bits.displacement = static_cast<int8_t>(bit);
        bits.type_index = TYPE_UCHAR;
    } else {
        offset = AlignToAnchor(displacement, nof_bits, record);
    }
    bits.type_index = WithSignOf(old_type, bits.type_index);
    Types.BfUnitOffset = static_cast<uint32_t>(offset);
    Types.BfUnitType = TYPE_UCHAR;
    return Types.BfUnitOffset;
}

void ResolveStructureBitfields(uint32_t fst_ti) {
    ResetPlacement();
    Trace("Resolve Structure Bitfields: fst_ti=%d\n", static_cast<int32_t>(fst_ti));
    const TYPEINFO record = RecordAtPositionOf(fst_ti);
    const ReferenceList list = ListOf(record);
    if (record.type_tag != TAG_STRUCT || list.count == 0) return;
    Trace("STRUCT %u: size=%u, nof_elem=%u\n", fst_ti, record.u.structunion.size, list.count);
    const auto resolve = [&list](uint32_t number) { ResolveElement(list, number); };
    // The trace has a line for every element.
    if (list.count <= SHORT_LIST || Report.DebugMode != 0)
        for (uint32_t number = 0; number < list.count; ++number) resolve(number);
    else
        Types.Bitfields.VisitOpen(list, resolve);
}

}  // namespace scan695
