#include <map>
#include <ostream>

#include "ask/diff.h"
#include "ask/layouts.h"
#include "inspector/c_text.h"
#include "inspector/names.h"

namespace scan695::ask {

namespace {

using inspector::HexText;
using inspector::Printable;

std::string Declared(const Fst& fst, const Symbol& symbol) {
    const std::string name(inspector::NameAt(fst, symbol.record.name_offs).value_or("?"));
    if (symbol.record.type_index == TYPE_VOID) return Printable(name);
    return Printable(inspector::Declaration(fst, symbol.record.type_index, name));
}

void PrintSymbol(const Fst& fst_before, const Fst& fst_after, const SymbolChange& change,
                 std::ostream& out) {
    const auto& before = change.before;
    const auto& after = change.after;
    const DiffSymbol& named = after ? *after : *before;
    out << (!before  ? "  + "
            : !after ? "  - "
                     : "  ~ ")
        << Declared(after ? fst_after : fst_before, named.symbol) << "  ";
    if (change.is_moved) out << HexText(before->symbol.record.value) << " -> ";
    out << HexText(named.symbol.record.value);
    if (change.is_resized) {
        out << ", " << before->size << " -> " << after->size << " bytes";
    } else if (named.size != 0) {
        out << ", " << named.size << " bytes";
    }
    if (before && after && !change.is_resized && change.bytes != 0)
        out << ", " << change.bytes << " of them differ";
    if (change.is_retyped) out << ", was " << Declared(fst_before, before->symbol);
    if (!named.function.empty()) out << ", in " << Printable(named.function);
    if (!named.module.empty()) out << ", module " << Printable(named.module);
    out << '\n';
}

std::vector<std::string> LinesOf(const Fst& fst, const std::vector<uint32_t>& types) {
    std::vector<std::string> lines;
    for (const uint32_t type : types) {
        const auto found = inspector::FindType(fst, type);
        if (!found) continue;
        const Layout layout = LayoutOf(fst, *found);
        const std::string text = layout.text + "}; size " + std::to_string(layout.size) + "\n";
        for (size_t begin = 0; begin < text.size();) {
            const size_t end = text.find('\n', begin);
            lines.push_back(Printable(std::string_view(text).substr(begin, end - begin)));
            begin = end + 1;
        }
    }
    return lines;
}

// The lines that the other side has as well are left out, but for the first, which tells the tag.
void PrintLines(const std::vector<std::string>& lines, const std::vector<std::string>& other,
                const char* sign, std::ostream& out) {
    std::map<std::string_view, int> shared;
    for (const std::string& line : other) ++shared[line];
    for (const std::string& line : lines) {
        const auto found = shared.find(line);
        if (found != shared.end() && found->second-- > 0) continue;
        out << "    " << sign << ' ' << line << '\n';
    }
}

void PrintLayouts(const Fst& before, const Fst& after, const LayoutChange& change,
                  std::ostream& out) {
    const bool is_gone = change.after.empty();
    const auto found =
        inspector::FindType(is_gone ? before : after, is_gone ? change.before[0] : change.after[0]);
    if (!found) return;
    out << (change.before.empty() ? "  + "
            : is_gone             ? "  - "
                                  : "  ~ ")
        << Printable(inspector::TagText(is_gone ? before : after, found->type)) << '\n';
    const auto old_lines = LinesOf(before, change.before);
    const auto new_lines = LinesOf(after, change.after);
    PrintLines(old_lines, new_lines, "-", out);
    PrintLines(new_lines, old_lines, "+", out);
}

void PrintModule(const ModuleChange& change, std::ostream& out) {
    out << (!change.before  ? "  + "
            : !change.after ? "  - "
                            : "  ~ ")
        << (change.name.empty() ? "(nobody)" : Printable(change.name));
    const ModuleTotals none;
    const ModuleTotals& before = change.before ? *change.before : none;
    const ModuleTotals& after = change.after ? *change.after : none;
    const char* separator = "  ";
    const auto print = [&](const char* what, uint64_t from, uint64_t to) {
        if (from == to) return;
        out << separator << what << ' ' << from << " -> " << to;
        separator = ", ";
    };
    print("code", before.bytes.code, after.bytes.code);
    print("constants", before.bytes.constants, after.bytes.constants);
    print("data", before.bytes.data, after.bytes.data);
    print("lines", before.lines, after.lines);
    out << '\n';
}

}  // namespace

void PrintDiff(const Fst& before, const Fst& after, const Diff& diff, std::ostream& out) {
    if (!diff.symbols.empty()) out << "symbols:\n";
    for (const SymbolChange& change : diff.symbols) PrintSymbol(before, after, change, out);
    if (!diff.layouts.empty()) out << "layouts:\n";
    for (const LayoutChange& change : diff.layouts) PrintLayouts(before, after, change, out);
    if (!diff.modules.empty()) out << "modules:\n";
    for (const ModuleChange& change : diff.modules) PrintModule(change, out);
    if (diff.image_before != diff.image_after)
        out << "image: " << diff.image_before << " -> " << diff.image_after << " bytes\n";
    if (diff.is_rest_changed) out << "image: differs outside of functions and variables\n";
}

}  // namespace scan695::ask
