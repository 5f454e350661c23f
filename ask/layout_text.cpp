#include <algorithm>
#include <ostream>

#include "ask/layouts.h"
#include "inspector/c_text.h"
#include "inspector/json.h"
#include "inspector/names.h"
#include "inspector/rows.h"

namespace scan695::ask {

namespace {

constexpr size_t COMMENT_COLUMN = 48;
constexpr size_t NUMBER_WIDTH = 8;

std::string Padded(const std::string& text, size_t width) {
    return text + std::string(text.size() < width ? width - text.size() : 1, ' ');
}

std::string RightAligned(const std::string& text, size_t width) {
    return std::string(text.size() < width ? width - text.size() : 0, ' ') + text;
}

// A place as its byte, for bits with the bit behind a colon.
std::string PlaceText(uint64_t bits, bool has_bits) {
    return std::to_string(bits / 8) + (has_bits ? ":" + std::to_string(bits % 8) : "");
}

// "3 bytes"; "5 bits" where they are not whole or asked for.
std::string SizeText(uint64_t bits, bool as_bits) {
    const uint64_t count = as_bits || bits % 8 != 0 ? bits : bits / 8;
    return std::to_string(count) + (count == bits && bits != 0 ? " bit" : " byte") +
           (count == 1 ? "" : "s");
}

std::string MemberLine(const inspector::Fst& fst, const Member& member) {
    const std::string text =
        "    " + inspector::Declaration(fst, member.type_index, member.name) + ";";
    return Padded(text, COMMENT_COLUMN) + "/* " +
           RightAligned(PlaceText(member.begin_bit, member.is_bitfield), NUMBER_WIDTH) +
           RightAligned(
               member.is_bitfield ? SizeText(member.bits, true) : std::to_string(member.bits / 8),
               NUMBER_WIDTH) +
           " */\n";
}

std::string HoleLine(const Hole& hole) {
    return "    /* hole of " + SizeText(hole.bits, false) + " at " +
           PlaceText(hole.offset * 8 + hole.bit_offset, hole.bit_offset != 0) + " */\n";
}

std::string EnumerationText(const Layout& layout) {
    std::string text;
    for (const Member& item : layout.members)
        text +=
            "    " + item.name + " = " + std::to_string(static_cast<int32_t>(item.value)) + ",\n";
    return text;
}

}  // namespace

std::string LayoutText(const inspector::Fst& fst, const Layout& layout) {
    const std::string head = inspector::TagText(fst, layout.found.type) + " {";
    if (layout.found.type.type_tag == TAG_ENUMERATION) return head + "\n" + EnumerationText(layout);
    std::string text = Padded(head, COMMENT_COLUMN) + "/* " + RightAligned("offset", NUMBER_WIDTH) +
                       RightAligned("size", NUMBER_WIDTH) + " */\n";
    size_t hole = 0;
    for (const Member& member : layout.members) {
        // A hole stands in front of the member that ends it.
        for (; hole < layout.holes.size(); ++hole) {
            const uint64_t place = layout.holes[hole].offset * 8 + layout.holes[hole].bit_offset;
            if (place >= member.begin_bit) break;
            text += HoleLine(layout.holes[hole]);
        }
        text += MemberLine(fst, member);
    }
    for (; hole < layout.holes.size(); ++hole) text += HoleLine(layout.holes[hole]);
    return text;
}

void PrintLayout(const Layout& layout, std::ostream& out) {
    const std::string& text = layout.text;
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = text.find('\n', begin);
        out << inspector::Printable(std::string_view(text).substr(begin, end - begin)) << '\n';
        begin = end + 1;
    }
    std::string summary = "size " + std::to_string(layout.size);
    uint64_t bits = 0;
    for (const Hole& hole : layout.holes) bits += hole.bits;
    if (bits != 0)
        summary += ", " + SizeText(bits, false) + " in " + std::to_string(layout.holes.size()) +
                   (layout.holes.size() == 1 ? " hole" : " holes");
    summary += layout.types.size() == 1 ? ", type" : ", types";
    for (const uint32_t type : layout.types)
        summary += (type == layout.types[0] ? " " : ", ") + std::to_string(type);
    out << Padded("};", COMMENT_COLUMN) << "/* " << summary << " */\n";
}

void WriteLayout(const inspector::Fst& fst, const Layout& layout, inspector::JsonWriter& json) {
    static const inspector::Table* const table = inspector::FindTable("types");
    json.BeginObject();
    WriteMembers(json, *table, inspector::TypeRow(fst, layout.found.record, layout.found.type));
    json.Key("types").BeginArray();
    for (const uint32_t type : layout.types) json.Value(type);
    json.End();
    json.Key("holes").BeginArray();
    for (const Hole& hole : layout.holes) {
        json.BeginObject();
        json.Member("offset", hole.offset);
        json.Member("bit_offset", hole.bit_offset);
        json.Member("bits", hole.bits);
        json.End();
    }
    json.End();
    json.End();
}

}  // namespace scan695::ask
