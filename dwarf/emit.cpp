#include "dwarf/emit.h"

#include "dwarf/units.h"

namespace scan695::dwarf {

namespace {

// The set of addresses of a unit in .debug_aranges; nothing for a unit without code.
void AppendAddresses(Bytes& aranges, uint32_t unit_offset, const std::vector<Stretch>& stretches) {
    constexpr size_t PAIR = size_t{2} * ADDRESS_SIZE;
    if (stretches.empty()) return;
    const size_t begin = aranges.size();
    Put32(aranges, 0);
    Put16(aranges, ARANGES_VERSION);
    Put32(aranges, unit_offset);
    Put8(aranges, ADDRESS_SIZE);
    Put8(aranges, 0);  // no segments
    while ((aranges.size() - begin) % PAIR != 0) Put8(aranges, 0);
    for (const Stretch& stretch : stretches) {
        const uint64_t size = std::min(stretch.end - stretch.begin, ADDRESS_SPACE - 1);
        Put32(aranges, static_cast<uint32_t>(stretch.begin));
        Put32(aranges, static_cast<uint32_t>(size));
    }
    Put32(aranges, 0);
    Put32(aranges, 0);
    SetLength(aranges, begin);
}

// Puts the unit of types in front and fills in the references to it.
Bytes JoinUnits(const EntryWriter& type_unit, const EntryWriter& units, const Types& types) {
    Bytes info = type_unit.bytes();
    PutBytes(info, units.bytes());
    for (const TypeReference& reference : type_unit.references())
        Set32(info, reference.position, types.OffsetOf(reference.type));
    for (const TypeReference& reference : units.references())
        Set32(info, type_unit.bytes().size() + reference.position, types.OffsetOf(reference.type));
    return info;
}

}  // namespace

std::vector<Section> Emit(const Program& program) {
    const CodeMap map = BuildCodeMap(program);
    const BlockCode code = VisibleCode(program, map);
    Abbreviations abbreviations;
    StringTable strings;
    Types types(program.fst);
    UnitSections sections;
    EntryWriter units(abbreviations, strings, FORM_REF_ADDR);
    std::vector<size_t> offsets;
    for (uint32_t unit = 0; unit < map.stretches.size(); ++unit) {
        offsets.push_back(units.bytes().size());
        if (unit == program.modules.size() && IsEmptyUnit(program, map, unit)) break;
        WriteUnit(program, map, code, unit, types, sections, units);
    }
    EntryWriter type_unit(abbreviations, strings, FORM_REF4);
    types.Write(type_unit);

    Bytes aranges;
    for (uint32_t unit = 0; unit < map.stretches.size(); ++unit) {
        const size_t offset = type_unit.bytes().size() + offsets[unit];
        AppendAddresses(aranges, static_cast<uint32_t>(offset), map.stretches[unit]);
    }
    std::vector<Section> all = {{".debug_info", false, JoinUnits(type_unit, units, types)},
                                {".debug_abbrev", false, abbreviations.Table()},
                                {".debug_line", false, std::move(sections.line)},
                                {".debug_str", true, strings.bytes()},
                                {".debug_loc", false, std::move(sections.loc)},
                                {".debug_ranges", false, std::move(sections.ranges)},
                                {".debug_aranges", false, std::move(aranges)}};
    std::erase_if(all, [](const Section& section) { return section.bytes.empty(); });
    return all;
}

}  // namespace scan695::dwarf
