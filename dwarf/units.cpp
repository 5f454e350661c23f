#include "dwarf/units.h"

#include "dwarf/lines.h"
#include "dwarf/scopes.h"

namespace scan695::dwarf {

void WriteUnit(const Program& program, const CodeMap& map, const BlockCode& code, uint32_t unit,
               Types& types, UnitSections& sections, EntryWriter& writer) {
    std::string_view name;
    std::string_view file = "(no module)";
    int8_t language = LANGUAGE_ASM;
    if (unit < program.modules.size()) {
        const MODULEINFO& module = program.modules[unit];
        name = NameOf(program.fst, module.name_offs);
        file = FileNameOf(program.fst, module);
        language = module.language;
    }
    const size_t begin = writer.BeginUnit();
    writer.Begin(TAG_COMPILE_UNIT);
    writer.Name(file);
    if (name != file) writer.Text(AT_DESCRIPTION, name);
    writer.Text(AT_PRODUCER, PRODUCER);
    writer.Word(AT_LANGUAGE, language == LANGUAGE_C ? LANG_C89 : LANG_ASSEMBLER);
    // Lists need a base address, which is that of the unit where it has but one stretch.
    const std::vector<Stretch>& stretches = map.stretches[unit];
    const uint32_t base = stretches.size() == 1 ? static_cast<uint32_t>(stretches[0].begin) : 0;
    if (stretches.size() > 1) writer.Address(AT_LOW_PC, base);
    AddCode(writer, sections.ranges, stretches, base);
    if (!map.unit_rows[unit].empty())
        writer.Offset(AT_STMT_LIST, AppendLineProgram(sections.line, map, unit, file));
    const uint32_t scope = program.FirstUnit() + unit;
    const bool has_children = program.HasContents(scope);
    writer.End(has_children);
    if (has_children) WriteScope(program, code, scope, base, types, sections, writer);
    writer.EndUnit(begin);
}

bool IsEmptyUnit(const Program& program, const CodeMap& map, uint32_t unit) {
    return !program.HasContents(program.FirstUnit() + unit) && map.unit_rows[unit].empty();
}

}  // namespace scan695::dwarf
