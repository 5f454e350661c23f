// Bytes of a section under construction and the forms of numbers in them, low byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace scan695::dwarf {

using Bytes = std::vector<uint8_t>;

inline void Put8(Bytes& out, unsigned value) {
    out.push_back(static_cast<uint8_t>(value));
}
inline void Put16(Bytes& out, uint32_t value) {
    Put8(out, value & 0xFF);
    Put8(out, value >> 8 & 0xFF);
}
inline void Put32(Bytes& out, uint32_t value) {
    Put16(out, value);
    Put16(out, value >> 16);
}

inline void PutUleb(Bytes& out, uint64_t value) {
    while (value >= 0x80) {
        Put8(out, (value & 0x7F) | 0x80);
        value >>= 7;
    }
    Put8(out, static_cast<unsigned>(value));
}

inline void PutSleb(Bytes& out, int64_t value) {
    while (value < -0x40 || value >= 0x40) {
        Put8(out, (static_cast<unsigned>(value) & 0x7F) | 0x80);
        value >>= 7;
    }
    Put8(out, static_cast<unsigned>(value) & 0x7F);
}

inline void PutBytes(Bytes& out, const Bytes& more) {
    out.insert(out.end(), more.begin(), more.end());
}

inline void PutText(Bytes& out, std::string_view text) {
    out.insert(out.end(), text.begin(), text.end());
    Put8(out, 0);
}

// Offsets within a section; sections stay below 4 GB, since the FST file is below 2 GB.
inline uint32_t Size32(const Bytes& bytes) {
    return static_cast<uint32_t>(bytes.size());
}

inline void Set32(Bytes& out, size_t at, uint32_t value) {
    for (size_t i = 0; i < 4; ++i) out[at + i] = static_cast<uint8_t>(value >> 8 * i);
}
// Fills the 32-bit length at `at` with the number of bytes behind it.
inline void SetLength(Bytes& out, size_t at) {
    Set32(out, at, static_cast<uint32_t>(out.size() - at - 4));
}

}  // namespace scan695::dwarf
