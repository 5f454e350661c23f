// Type records of BB1 and BB2 blocks. Definitions nest as they do in the format: wherever a type
// stands, a number refers to one and a definition holds one.
#pragma once

#include <optional>
#include <vector>

#include "builder/bytes.h"

namespace scan695::builder {

// A type definition, or a reference when made from a number.
struct TypeDef {
    Bytes bytes;

    template <std::integral T>
    TypeDef(T reference) : bytes(Num(reference)) {}
    TypeDef(const Num& reference) : bytes(reference) {}
    explicit TypeDef(Bytes raw) : bytes(std::move(raw)) {}
};

struct Member {
    Text name;
    TypeDef type;
    Num offset;  // in bytes; of a bitfield in bits
};

struct EnumItem {
    Text name;
    Num value;
};

struct FunctionType {
    TypeDef returns = 0;
    std::vector<TypeDef> parameters = {};
    // Without it -1 stands for no parameters, and otherwise their count.
    std::optional<Num> count = {};
    Num attributes = 8;
    Num frame_type = 0;
    Num push_mask = 0;
    Num level = 0;
    Num father = Absent();
};

namespace def {

TypeDef Function(const FunctionType& function);                                    // x
TypeDef Array(const TypeDef& element, const Num& upper_bound);                     // Z
TypeDef PointerAttribute(const Num& kind, const TypeDef& base, const Num& level);  // n
TypeDef SmallPointer(const TypeDef& target);                                       // O
TypeDef LargePointer(const TypeDef& target);                                       // P
TypeDef Struct(const Num& size, const std::vector<Member>& members,
               const Bytes& end = {0x00});                                                      // S
TypeDef Union(const Num& size, const std::vector<Member>& members, const Bytes& end = {0x00});  // U
// `mark` stands in front of the items; EnumSize gives the usual one.
TypeDef Enum(const std::vector<EnumItem>& items, const Bytes& mark = {},
             const Bytes& end = {0x00});                                           // N
TypeDef Typedef(const Num& target);                                                // T
TypeDef OtherTypedef(const Num& target);                                           // t
TypeDef Bitfield(const Num& is_signed, const Num& bits, const Num& third = 0x10);  // g
TypeDef Qualified(const Num& qualifier, const TypeDef& base);                      // Q

}  // namespace def

// The size mark of an enumeration: a zero byte and the size.
Bytes EnumSize(uint8_t size);

// F2 tk_index CE ident definition.
Bytes TypeRecord(const Num& tk_index, const Num& ident, const TypeDef& definition);
// NN with the name, then the type record under the same index.
Bytes NamedType(const Num& index, const Text& name, const Num& tk_index, const TypeDef& definition);

}  // namespace scan695::builder
