#include "dwarf/entries.h"

namespace scan695::dwarf {

size_t EntryWriter::BeginUnit() {
    const size_t begin = bytes_.size();
    Put32(bytes_, 0);  // length
    Put16(bytes_, VERSION);
    Put32(bytes_, 0);  // all units share one table of abbreviations
    Put8(bytes_, ADDRESS_SIZE);
    return begin;
}

size_t EntryWriter::Begin(Tag tag) {
    shape_ = {static_cast<char>(tag), 0};
    values_.clear();
    type_ = NO_TYPE;
    return bytes_.size();
}

void EntryWriter::End(bool has_children) {
    shape_[1] = has_children ? 1 : 0;
    PutUleb(bytes_, abbreviations_.Number(shape_));
    if (type_ != NO_TYPE) references_.push_back({bytes_.size() + type_position_, type_});
    PutBytes(bytes_, values_);
}

void EntryWriter::Add(Attribute attribute, Form form) {
    shape_ += static_cast<char>(attribute);
    shape_ += static_cast<char>(form);
}

void EntryWriter::Text(Attribute attribute, std::string_view text) {
    if (text.empty()) return;
    Add(attribute, FORM_STRP);
    Put32(values_, strings_.Offset(text));
}

void EntryWriter::Address(Attribute attribute, uint32_t address) {
    Add(attribute, FORM_ADDR);
    Put32(values_, address);
}

void EntryWriter::Size(Attribute attribute, uint32_t size) {
    Add(attribute, FORM_DATA4);
    Put32(values_, size);
}

void EntryWriter::Byte(Attribute attribute, uint8_t value) {
    Add(attribute, FORM_DATA1);
    Put8(values_, value);
}

void EntryWriter::Word(Attribute attribute, uint16_t value) {
    Add(attribute, FORM_DATA2);
    Put16(values_, value);
}

void EntryWriter::Number(Attribute attribute, uint64_t value) {
    Add(attribute, FORM_UDATA);
    PutUleb(values_, value);
}

void EntryWriter::Signed(Attribute attribute, int64_t value) {
    Add(attribute, FORM_SDATA);
    PutSleb(values_, value);
}

void EntryWriter::Offset(Attribute attribute, uint32_t offset) {
    Add(attribute, FORM_SEC_OFFSET);
    Put32(values_, offset);
}

void EntryWriter::Expression(Attribute attribute, const Bytes& expression) {
    Add(attribute, FORM_EXPRLOC);
    PutUleb(values_, expression.size());
    PutBytes(values_, expression);
}

void EntryWriter::Type(TypeId type) {
    if (type == NO_TYPE) return;
    Add(AT_TYPE, reference_);
    type_position_ = values_.size();
    type_ = type;
    Put32(values_, 0);
}

}  // namespace scan695::dwarf
