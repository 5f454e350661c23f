#include "inspector/c_text.h"
#include "inspector/lookup.h"
#include "inspector/names.h"
#include "inspector/rows.h"

namespace scan695::inspector {

namespace {

Cell SizeCell(const Fst& fst, uint32_t type_index) {
    const auto size = SizeOfType(fst, type_index);
    return size ? NumberCell(*size) : Cell{};
}

// Calls `use(field)` for the elements of a list.
template <class Use>
void ForEachField(const Fst& fst, uint32_t offset, uint32_t count, Use use) {
    for (uint32_t i = 0; offset != 0 && i < count; ++i) {
        FIELDINFO field;
        if (!ReadAt(fst, offset + uint64_t{i} * sizeof field, field)) break;
        use(field);
    }
}

// A bitfield as bit offset, width, number and words of its storage unit.
Cells BitCells(const Fst& fst, uint32_t type_index) {
    const auto found = FindType(fst, type_index);
    if (!found || found->type.type_tag != TAG_BITFIELD) return Cells(4);
    const auto& bits = found->type.u.bits;
    return {NumberCell(bits.displacement), NumberCell(bits.nof_bits), NumberCell(bits.type_index),
            TextCell(Declaration(fst, bits.type_index))};
}

std::vector<Cells> Members(const Fst& fst, const TYPEINFO::Variant::StructUnion& type) {
    std::vector<Cells> members;
    ForEachField(fst, type.field_offs, StoredElements(type.nof_elem), [&](const FIELDINFO& field) {
        const Cells bits = BitCells(fst, field.type_index);
        // A bitfield takes the size of its storage unit.
        const uint32_t sized = bits[2].kind == Cell::NOTHING
                                   ? field.type_index
                                   : static_cast<uint32_t>(bits[2].number);
        Cells& member = members.emplace_back();
        member = {NameCell(fst, field.name_offs), NumberCell(field.value), SizeCell(fst, sized),
                  NumberCell(field.type_index), TextCell(Declaration(fst, field.type_index))};
        member.insert(member.end(), bits.begin(), bits.end());
    });
    return members;
}

std::vector<Cells> Items(const Fst& fst, const TYPEINFO::Variant::Enumeration& type) {
    std::vector<Cells> items;
    ForEachField(fst, type.field_offs, StoredElements(type.nof_elem), [&](const FIELDINFO& field) {
        items.push_back(
            {NameCell(fst, field.name_offs), NumberCell(static_cast<int32_t>(field.value))});
    });
    return items;
}

std::vector<Cells> Parameters(const Fst& fst, const TYPEINFO::Variant::Function& type) {
    std::vector<Cells> parameters;
    ForEachField(fst, type.params_offset, type.nof_params, [&](const FIELDINFO& field) {
        parameters.push_back({SizeCell(fst, field.type_index), NumberCell(field.type_index),
                              TextCell(Declaration(fst, field.type_index))});
    });
    return parameters;
}

}  // namespace

Row TypeRow(const Fst& fst, uint32_t number, const TYPEINFO& type) {
    const auto& u = type.u;
    Cell name, count, spec, target, target_name;
    std::vector<std::vector<Cells>> details(3);
    const auto set_target = [&](uint32_t type_index) {
        target = NumberCell(type_index);
        target_name = TextCell(Declaration(fst, type_index));
    };
    switch (type.type_tag) {
        case TAG_FUNCTION:
            count = NumberCell(u.function.nof_params);
            spec = HexCell(u.function.spec);
            set_target(u.function.type_index);
            details[2] = Parameters(fst, u.function);
            break;
        case TAG_ARRAY:
            count = NumberCell(u.array.nof_elem);
            set_target(u.array.type_index);
            break;
        case TAG_STRUCT:
        case TAG_UNION:
            name = NameCell(fst, u.structunion.name_offs);
            count = NumberCell(u.structunion.nof_elem);
            details[0] = Members(fst, u.structunion);
            break;
        case TAG_ENUMERATION:
            name = NameCell(fst, u.enumeration.name_offs);
            count = NumberCell(u.enumeration.nof_elem);
            set_target(u.enumeration.type_index);
            details[1] = Items(fst, u.enumeration);
            break;
        case TAG_POINTER:
        case TAG_ATTRIBUTE:
            spec = HexCell(u.pointer.spec);
            set_target(u.pointer.type_index);
            break;
        case TAG_NONE:
        case TAG_BITFIELD:
            break;
    }
    const uint32_t index = type.here_type_index;
    Cells cells = {NumberCell(number),
                   NumberCell(index),
                   TextCell(TypeTagWord(type.type_tag)),
                   name,
                   SizeCell(fst, index),
                   count,
                   spec,
                   target,
                   target_name};
    for (const Cell& cell : BitCells(fst, index)) cells.push_back(cell);
    cells.push_back(TextCell(Declaration(fst, index)));
    return {std::move(cells), std::move(details)};
}

void TypeRows(const Fst& fst, const RowSink& sink) {
    InOrder<TYPEINFO>(fst, TYPE_INDEX, TYPES, [&](uint32_t number, const TYPEINFO& type) {
        sink(TypeRow(fst, number, type));
    });
}

}  // namespace scan695::inspector
