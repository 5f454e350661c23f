#include "builder/memory_records.h"

namespace scan695::builder {

Bytes Nn(const Num& index, const Text& name) {
    return Bytes{0xF0} + index + name;
}

Bytes Asn(const Num& index, const Num& value) {
    return Bytes{0xE2, 0xCE} + index + value;
}

Bytes AdExtension(const Bytes& attributes) {
    return Nn(32, "") + attributes;
}

Bytes Environment(const Bytes& attributes) {
    return Nn(33, "") + attributes;
}

Bytes Segment(const Num& number, Memory memory, const Text& name, const Num& base,
              const Num& size) {
    const Bytes letters[] = {
        {0xC1, 0xD3, 0xD0}, {0xC1, 0xD3, 0xD2}, {0xC1, 0xD3, 0xC4}, {0xC1, 0xD3}};
    return Bytes{0xE6} + number + letters[static_cast<size_t>(memory)] + name + Bytes{0xE7} +
           number + Bytes{0x00} + Bytes{0xE2, 0xD3} + number + size + Bytes{0xE2, 0xCC} + number +
           base;
}

Bytes PublicSymbol(const Num& index, const Text& name, const Num& type, const Num& attribute,
                   const Num& value, const Num& memory_id) {
    return Bytes{0xE8} + index + name + Bytes{0xF1, 0xC9} + index + type + attribute + memory_id +
           Bytes{0xE2, 0xC9} + index + value;
}

Bytes UseSegment(const Num& number) {
    return Bytes{0xE5} + number;
}

Bytes LoadAt(const Num& segment, const Num& address) {
    return Bytes{0xE2, 0xD0} + segment + address;
}

Bytes Repeat(const Num& count) {
    return Bytes{0xF7} + count;
}

Bytes Load(const Bytes& bytes) {
    return LoadCounted(bytes.size(), bytes);
}

Bytes LoadCounted(const Num& count, const Bytes& bytes) {
    return Bytes{0xED} + count + bytes;
}

Bytes Trailer(const Num& address, const Num& segment) {
    return Bytes{0xE2, 0xC7} + address + segment;
}

Bytes BracketTrailer(const Num& address, const Num& segment) {
    return Bytes{0xE2, 0xC7, 0xBE} + address + segment + Bytes{0xBF};
}

}  // namespace scan695::builder
