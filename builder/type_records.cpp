#include "builder/type_records.h"

#include "builder/memory_records.h"

namespace scan695::builder {

namespace {

// Letters of definitions are numbers below 80, so they stand as their own character.
Bytes Letter(char letter) {
    return {static_cast<uint8_t>(letter)};
}

Bytes MemberList(const std::vector<Member>& members) {
    Bytes list;
    for (const Member& member : members)
        list += Bytes(member.name) + member.type.bytes + member.offset;
    return list;
}

}  // namespace

namespace def {

TypeDef Function(const FunctionType& function) {
    Num count = function.parameters.empty() ? Num(-1) : Num(function.parameters.size());
    if (function.count) count = *function.count;
    Bytes bytes = Letter('x') + function.attributes + function.frame_type + function.push_mask +
                  function.returns.bytes + count;
    for (const TypeDef& parameter : function.parameters) bytes += parameter.bytes;
    return TypeDef(bytes + function.level + function.father);
}

TypeDef Array(const TypeDef& element, const Num& upper_bound) {
    return TypeDef(Letter('Z') + element.bytes + upper_bound);
}

TypeDef PointerAttribute(const Num& kind, const TypeDef& base, const Num& level) {
    return TypeDef(Letter('n') + kind + base.bytes + level);
}

TypeDef SmallPointer(const TypeDef& target) {
    return TypeDef(Letter('O') + target.bytes);
}

TypeDef LargePointer(const TypeDef& target) {
    return TypeDef(Letter('P') + target.bytes);
}

TypeDef Struct(const Num& size, const std::vector<Member>& members, const Bytes& end) {
    return TypeDef(Letter('S') + size + MemberList(members) + end);
}

TypeDef Union(const Num& size, const std::vector<Member>& members, const Bytes& end) {
    return TypeDef(Letter('U') + size + MemberList(members) + end);
}

TypeDef Enum(const std::vector<EnumItem>& items, const Bytes& mark, const Bytes& end) {
    Bytes bytes = Letter('N') + mark;
    for (const EnumItem& item : items) bytes += Bytes(item.name) + item.value;
    return TypeDef(bytes + end);
}

TypeDef Typedef(const Num& target) {
    return TypeDef(Letter('T') + target);
}

TypeDef OtherTypedef(const Num& target) {
    return TypeDef(Letter('t') + target);
}

TypeDef Bitfield(const Num& is_signed, const Num& bits, const Num& third) {
    return TypeDef(Letter('g') + is_signed + bits + third);
}

TypeDef Qualified(const Num& qualifier, const TypeDef& base) {
    return TypeDef(Letter('Q') + qualifier + base.bytes);
}

}  // namespace def

Bytes EnumSize(uint8_t size) {
    return {0x00, size};
}

Bytes TypeRecord(const Num& tk_index, const Num& ident, const TypeDef& definition) {
    return Bytes{0xF2} + tk_index + Bytes{0xCE} + ident + definition.bytes;
}

Bytes NamedType(const Num& index, const Text& name, const Num& tk_index,
                const TypeDef& definition) {
    return Nn(index, name) + TypeRecord(tk_index, index, definition);
}

}  // namespace scan695::builder
