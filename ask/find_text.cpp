#include <ostream>

#include "ask/find.h"
#include "inspector/c_text.h"
#include "inspector/lookup.h"
#include "inspector/names.h"
#include "inspector/rows.h"

namespace scan695::ask {

using inspector::HexText;
using inspector::Printable;

namespace {

std::string Span(uint32_t address, uint32_t size) {
    return HexText(address) + "-" + HexText(address + size - 1);
}

// Where a symbol or location is kept.
std::string KeptIn(const Fst& fst, uint8_t storage_class, uint32_t value) {
    if (storage_class == STORAGE_AUTO) {
        const auto offset = static_cast<int32_t>(value);
        return "stack " + std::string(offset < 0 ? "" : "+") + std::to_string(offset);
    }
    if (storage_class != STORAGE_REGISTER) return HexText(value);
    const std::string word = inspector::RegisterCell(fst, storage_class, value).text;
    return word.empty() ? "register " + HexText(value) : word;
}

std::string BytesText(uint32_t size) {
    return std::to_string(size) + (size == 1 ? " byte" : " bytes");
}

// A label has no type that would tell anything.
std::string Declared(const Fst& fst, const Symbol& symbol, const std::string& name) {
    if (symbol.record.type_index == TYPE_VOID) return Printable(name);
    return Printable(inspector::Declaration(fst, symbol.record.type_index, name));
}

void PrintLocations(const Fst& fst, const SYMINFO& symbol, std::ostream& out) {
    const uint32_t count =
        symbol.locinfo_offs == 0 ? 0 : inspector::StoredElements(symbol.nof_locs);
    for (uint32_t i = 0; i < count; ++i) {
        LOCINFO location;
        const uint64_t offset = symbol.locinfo_offs + uint64_t{i} * sizeof location;
        if (!inspector::ReadAt(fst, offset, location) || location.exec_mem_type != 0) return;
        out << "    from " << HexText(location.beg_address);
        if (location.end_address != OPEN_END) out << " to " << HexText(location.end_address);
        out << "  " << KeptIn(fst, location.storage_class, location.value) << '\n';
    }
}

}  // namespace

// "main.c:75"; "?" stands for a source that is not told.
std::string Finder::LineText(const Line& line) const {
    const std::string source = SourceOf(line.record.module);
    return (source.empty() ? "?" : Printable(source)) + ':' + std::to_string(line.record.number);
}

// "0x282 main+0x12 main.c:75 MAIN_C", with "?" for what is not known.
std::string Finder::HeadOf(const Place& place) const {
    std::string text = HexText(place.address);
    const auto& anchor = place.function_symbol ? place.function_symbol : place.symbol;
    const std::string name = anchor ? NameOf(*anchor) : "";
    if (anchor) {
        const uint32_t offset = place.address - anchor->record.value;
        text += ' ' + (name.empty() ? "?" : Printable(name));
        if (offset != 0) text += '+' + HexText(offset);
    } else {
        text += " ?";
    }
    text += ' ' + (place.line ? LineText(*place.line) : "?");
    return text + ' ' + (place.range ? Printable(ModuleName(place.range->module)) : "?");
}

bool Finder::PrintBrief(const Query& query, std::ostream& out) {
    if (query.kind != Query::ADDRESS) return Print(query, out);
    const Place place = places_.At(query.address);
    out << HeadOf(place) << '\n';
    return place.code || place.range || place.function || place.symbol;
}

bool Finder::PrintAddress(const Query& query, std::ostream& out) {
    const Place place = places_.At(query.address);
    out << HeadOf(place) << '\n';
    if (place.code) {
        const CODEINFO& head = fst_.code[*place.code].head;
        out << "    memory    " << inspector::MemoryWord(head.mem_type) << ", block " << *place.code
            << " of the image, " << Span(head.address, head.length) << '\n';
    }
    if (place.range) {
        out << "    module    " << Printable(ModuleName(place.range->module)) << ", "
            << Span(place.range->address, place.range->length) << '\n';
    }
    const auto& anchor = place.function_symbol ? place.function_symbol : place.symbol;
    if (anchor) {
        const uint32_t size = place.function ? place.function->record.size : anchor->record.size;
        out << (place.function ? "    function  " : "    symbol    ")
            << Declared(fst_, *anchor, NameOf(*anchor)) << ", "
            << (size == 0 ? HexText(anchor->record.value) : Span(anchor->record.value, size))
            << '\n';
    }
    for (const Block& block : place.blocks) {
        if (block.record.is_function != 0) break;
        out << "    block     " << Span(block.record.address, block.record.size) << '\n';
    }
    if (place.line) {
        out << "    line      " << LineText(*place.line) << ", from "
            << HexText(place.line->record.address) << '\n';
    }
    for (const LiveVariable& variable : places_.VariablesAt(place)) {
        const SYMINFO& record = variable.symbol.record;
        const auto& location = variable.location;
        out << "    variable  " << Declared(fst_, variable.symbol, NameOf(variable.symbol))
            << " in "
            << (location ? KeptIn(fst_, location->storage_class, location->value)
                         : KeptIn(fst_, record.storage_class, record.value));
        if (location && location->end_address != OPEN_END) {
            out << ", " << HexText(location->beg_address) << " to "
                << HexText(location->end_address);
        }
        out << '\n';
    }
    return place.code || place.range || place.function || place.symbol;
}

bool Finder::PrintNames(const Query& query, std::ostream& out) {
    const NamedSymbols found = symbols_.Find(query.text);
    for (const Symbol& symbol : found.symbols) {
        const SYMINFO& record = symbol.record;
        const bool has_locations = record.locinfo_offs != 0 && record.mem_type != MEM_CODE;
        out << Declared(fst_, symbol, NameOf(symbol));
        if (!has_locations) out << "  " << KeptIn(fst_, record.storage_class, record.value);
        const auto block = places_.BlockOf(symbol);
        const uint32_t size = block ? block->record.size : record.size;
        if (size != 0) out << ", " << BytesText(size);
        out << ", " << inspector::StorageWord(record.storage_class);
        if (record.storage_class < STORAGE_AUTO)
            out << ' ' << inspector::MemoryWord(record.mem_type);
        const std::string function = FunctionName(symbol);
        if (!function.empty()) out << ", in " << Printable(function);
        if (record.module != -1) out << ", module " << Printable(ModuleName(record.module));
        if (const auto line = LineOf(symbol)) out << ", " << LineText(*line);
        out << '\n';
        if (has_locations) PrintLocations(fst_, record, out);
    }
    if (found.symbols.empty()) out << Printable(query.text) << ": no such symbol\n";
    return !found.symbols.empty();
}

bool Finder::PrintLine(const Query& query, std::ostream& out) {
    const SourceLines found = lines_.Find(query.source, query.line);
    for (const FoundLine& line : found.lines) {
        const Place place = places_.At(line.line.address);
        out << HeadOf(place) << '\n';
    }
    if (!found.lines.empty()) return true;
    out << Printable(query.text) << ": ";
    if (!found.has_source) {
        out << "no such source\n";
    } else if (found.next) {
        out << "no code, the next line with code is " << *found.next << '\n';
    } else {
        out << "no code, nor on any later line\n";
    }
    return false;
}

}  // namespace scan695::ask
