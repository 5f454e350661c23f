// Writes the entries of .debug_info, one after the other: Begin, its attributes, End.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dwarf/abbreviations.h"
#include "dwarf/bytes.h"
#include "dwarf/constants.h"
#include "dwarf/strings.h"

namespace scan695::dwarf {

// Numbers the entries of the unit of types; NO_TYPE stands for void and leaves its attribute out.
using TypeId = uint32_t;
inline constexpr TypeId NO_TYPE = 0xFFFFFFFF;

// Four bytes to be filled with the offset of a type's entry once that is known.
struct TypeReference {
    size_t position;
    TypeId type;
};

// `reference` is the form of references to types: FORM_REF4 inside the unit of types, which stands
// at the beginning of the section, FORM_REF_ADDR in all others. The offset is the same in both.
class EntryWriter {
  public:
    EntryWriter(Abbreviations& abbreviations, StringTable& strings, Form reference)
        : abbreviations_(abbreviations), strings_(strings), reference_(reference) {}

    // Gives where the unit begins.
    size_t BeginUnit();
    void EndUnit(size_t begin) { SetLength(bytes_, begin); }

    // Gives where the entry begins. EndList closes the list of children of one that has them.
    size_t Begin(Tag tag);
    void End(bool has_children);
    void EndList() { Put8(bytes_, 0); }

    void Text(Attribute attribute, std::string_view text);  // left out when empty
    void Name(std::string_view text) { Text(AT_NAME, text); }
    void Address(Attribute attribute, uint32_t address);
    void Size(Attribute attribute, uint32_t size);  // in four bytes
    void Byte(Attribute attribute, uint8_t value);
    void Word(Attribute attribute, uint16_t value);
    void Number(Attribute attribute, uint64_t value);
    void Signed(Attribute attribute, int64_t value);
    void Flag(Attribute attribute) { Add(attribute, FORM_FLAG_PRESENT); }
    void Offset(Attribute attribute, uint32_t offset);  // in another section
    void Expression(Attribute attribute, const Bytes& expression);
    void Type(TypeId type);

    const Bytes& bytes() const { return bytes_; }
    const std::vector<TypeReference>& references() const { return references_; }

  private:
    void Add(Attribute attribute, Form form);

    Abbreviations& abbreviations_;
    StringTable& strings_;
    Form reference_;
    Bytes bytes_;
    std::vector<TypeReference> references_;

    // Of the entry between Begin and End.
    std::string shape_;
    Bytes values_;
    size_t type_position_ = 0;
    TypeId type_ = NO_TYPE;
};

}  // namespace scan695::dwarf
