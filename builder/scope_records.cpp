#include "builder/scope_records.h"

#include "builder/memory_records.h"

namespace scan695::builder {

namespace {

Bytes AsnList(const Num& index, const std::vector<Num>& values) {
    Bytes list;
    for (const Num& value : values) list += Asn(index, value);
    return list;
}

Bytes NumberList(const std::vector<Num>& numbers) {
    Bytes list;
    for (const Num& number : numbers) list += number;
    return list;
}

Bytes FunctionHead(const FunctionBlock& block) {
    return Bytes(block.name) + block.stack + block.type + block.begin + block.extra;
}

}  // namespace

Bytes Block(uint8_t code, const Bytes& head, const Bytes& body, const Bytes& tail) {
    constexpr size_t FRAME = 2 + 5 + 1;  // F8 and code, length, F9
    const size_t length = FRAME + head.size() + body.size() + tail.size();
    return Bytes{0xF8, code} + Wide(static_cast<uint32_t>(length), 4) + head + body + Bytes{0xF9} +
           tail;
}

Bytes NamedBlock::operator()(const Text& name, const Bytes& body, const Bytes& rest) const {
    return Block(code, Bytes(name) + rest, body);
}

Bytes Bb4(const FunctionBlock& block) {
    return Block(0x04, FunctionHead(block), block.body, block.end);
}

Bytes Bb6(const FunctionBlock& block) {
    return Block(0x06, FunctionHead(block), block.body, block.end);
}

Bytes Bb11(const SectionBlock& section) {
    return Block(0x0B,
                 Bytes(section.name) + section.kind + section.segment + section.n4 + section.n5,
                 section.body, section.size);
}

Bytes SymbolKind::operator()(const Num& index, const Text& name, const Num& type, const Num& x1,
                             const Num& x2) const {
    return Nn(index, name) + Atn(index, type, kind, x1, x2);
}

Bytes AddressKind::operator()(const Num& index, const Text& name, const Num& type,
                              const Num& address, const Num& x1, const Num& x2) const {
    return Nn(index, name) + Atn(index, type, kind, x1, x2) + Asn(index, address);
}

Bytes ExternalFunction(const Num& index, const Text& name, const Num& type, const Num& x1,
                       const Num& address) {
    return Nn(index, name) + Atn(index, type, 4, x1) + Asn(index, address);
}

Bytes LockedRegister(const Num& index, const Text& name, const Num& type, const Num& x1,
                     const Num& x2) {
    return Nn(index, name) + Atn(index, type, 10, x1, x2);
}

Bytes BasedVariable(const Num& index, const Text& name, const Num& type,
                    const std::vector<Num>& five, const Num& value) {
    return Nn(index, name) + Atn(index, type, 12) + NumberList(five) + Asn(index, value);
}

Bytes Constant(const Num& index, const Text& name, const Num& type, const std::vector<Num>& numbers,
               const std::vector<Num>& values) {
    return Nn(index, name) + Atn(index, type, 16) + NumberList(numbers) + AsnList(index, values);
}

Bytes Misc(const Num& index, const Text& name, const Num& kind, const Num& code,
           const std::vector<Num>& values) {
    return Nn(index, name) + Atn(index, 0, kind, code, values.size()) + AsnList(index, values);
}

Bytes LifetimeMark(const Num& index, const Num& pc, const Num& storage, const Num& address,
                   const Num& memory) {
    const bool has_memory = !Bytes(memory).empty();
    return Nn(index, "") + Atn(index, 0, 63, 70, has_memory ? 4 : 3) +
           AsnList(index, {pc, storage, address}) + (has_memory ? Asn(index, memory) : Bytes{});
}

Bytes Lifetime(const Num& index, const Num& begin, const Num& end, uint32_t storage,
               const Num& address) {
    return LifetimeMark(index, end, storage | END_MARK, address) +
           LifetimeMark(index, begin, storage, address);
}

Bytes ParameterMark(const Num& index) {
    return Atn(index, 0, 63, 59, 0);
}

Bytes Line(const Num& index, const Num& number, const Num& address) {
    return Atn(index, 0, 7, number, 0) + Asn(index, address);
}

Bytes AsmLine(const Num& index, const Num& number, const Num& address) {
    return Nn(index, "") + Line(index, number, address);
}

Bytes StackPoint(const Num& index, const Num& pc, const Num& adjust) {
    return Atn(index, 0, 64, 51, 2) + Asn(index, pc) + Asn(index, adjust);
}

}  // namespace scan695::builder
