#include "inspector/c_text.h"

#include "inspector/lookup.h"
#include "inspector/names.h"

namespace scan695::inspector {

namespace {

constexpr int MAX_DEPTH = 12;              // of a declaration
constexpr size_t ENOUGH_PARAMETERS = 200;  // characters; behind them "..." stands for the rest

// The declarator grows from the name outwards; a pointer binds less than what stands behind it.
std::string Grouped(const std::string& declarator) {
    return declarator.starts_with('*') ? "(" + declarator + ")" : declarator;
}

std::string Joined(const std::string& base, const std::string& declarator) {
    return declarator.empty() || base.empty() ? base + declarator : base + " " + declarator;
}

std::string Declare(const Fst& fst, uint32_t type_index, std::string declarator, int depth);

std::string Parameters(const Fst& fst, const TYPEINFO::Variant::Function& function, int depth) {
    const uint32_t offset = function.params_offset;
    if (offset == 0) return function.nof_params == 0 ? "void" : "";  // 255: not told
    std::string text;
    for (uint32_t i = 0; i < function.nof_params; ++i) {
        FIELDINFO field;
        if (!ReadAt(fst, offset + uint64_t{i} * sizeof field, field)) break;
        if (i > 0) text += ", ";
        if (text.size() > ENOUGH_PARAMETERS) return text + "...";
        text += Declare(fst, field.type_index, {}, depth);
    }
    return text;
}

std::string Declare(const Fst& fst, uint32_t type_index, std::string declarator, int depth) {
    std::string qualifiers;
    for (; depth < MAX_DEPTH; ++depth) {
        if (IsTypeMarker(type_index)) {
            const std::string word = "<unresolved " + HexText(type_index & ~TYPE_MARKER_BIT) + ">";
            return qualifiers + Joined(word, declarator);
        }
        if (type_index < FIRST_TYPE_INDEX)
            return qualifiers + Joined(BasicTypeWord(type_index), declarator);
        const auto found = FindType(fst, type_index);
        if (!found) break;
        const auto& u = found->type.u;
        switch (found->type.type_tag) {
            case TAG_POINTER:
                declarator.insert(0, qualifiers.empty() ? "*" : "* " + qualifiers);
                qualifiers.clear();
                type_index = u.pointer.type_index;
                break;
            case TAG_ATTRIBUTE:
                qualifiers.append("__attribute(").append(HexText(u.pointer.spec)).append(") ");
                type_index = u.pointer.type_index;
                break;
            case TAG_ARRAY:
                declarator = Grouped(declarator) + "[" +
                             (u.array.nof_elem == 0 ? "" : std::to_string(u.array.nof_elem)) + "]";
                type_index = u.array.type_index;
                break;
            case TAG_FUNCTION: {
                // One level of parameters is enough to read, and bounds the work.
                const bool is_inner = depth >= MAX_DEPTH / 2;
                declarator = Grouped(declarator) + "(" +
                             (is_inner ? "..." : Parameters(fst, u.function, MAX_DEPTH / 2)) + ")";
                type_index = u.function.type_index;
                break;
            }
            case TAG_BITFIELD:
                return qualifiers + Joined(BasicTypeWord(u.bits.type_index), declarator) + " : " +
                       std::to_string(u.bits.nof_bits);
            case TAG_NONE:
            case TAG_STRUCT:
            case TAG_UNION:
            case TAG_ENUMERATION:
                return qualifiers + Joined(TagText(fst, found->type), declarator);
        }
    }
    return qualifiers + Joined("<type " + std::to_string(type_index) + ">", declarator);
}

}  // namespace

std::string Declaration(const Fst& fst, uint32_t type_index, std::string name) {
    return Declare(fst, type_index, std::move(name), 0);
}

std::string TagText(const Fst& fst, const TYPEINFO& type) {
    std::string word = "type ";
    std::optional<std::string_view> name;
    switch (type.type_tag) {
        case TAG_STRUCT:
        case TAG_UNION:
            word = type.type_tag == TAG_STRUCT ? "struct " : "union ";
            name = NameAt(fst, type.u.structunion.name_offs);
            break;
        case TAG_ENUMERATION:
            word = "enum ";
            name = NameAt(fst, type.u.enumeration.name_offs);
            break;
        case TAG_NONE:
        case TAG_POINTER:
        case TAG_ARRAY:
        case TAG_BITFIELD:
        case TAG_FUNCTION:
        case TAG_ATTRIBUTE:
            break;
    }
    if (name && !name->empty()) return word + std::string(*name);
    return word + "<" + std::to_string(type.here_type_index) + ">";
}

}  // namespace scan695::inspector
