#include "builder/bytes.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <stdexcept>

namespace scan695::builder {

void Bytes::Append(const uint8_t* bytes, size_t count) {
    std::copy_n(bytes, count, std::back_inserter(bytes_));
}

Bytes& Bytes::operator+=(const Bytes& more) {
    if (&more == this) return *this += Bytes(more);
    Append(more.data(), more.size());
    return *this;
}

Bytes Bytes::First(size_t count) const {
    Bytes first = *this;
    if (count < size()) first.bytes_.resize(count);
    return first;
}

Num::Num(uint8_t lead, uint32_t value, unsigned width) : size_(static_cast<uint8_t>(width + 1)) {
    bytes_[0] = lead;
    for (unsigned i = width; i > 0 && i + 4 > width; --i) {
        bytes_[i] = static_cast<uint8_t>(value);
        value >>= 8;
    }
}

Num::operator Bytes() const {
    Bytes bytes;
    bytes.Append(bytes_.data(), size_);
    return bytes;
}

Num Num::Shortest(uint32_t value) {
    if (value < 0x80) return Num(static_cast<uint8_t>(value), 0, 0);
    unsigned width = 1;
    while (width < 4 && value >> (8 * width) != 0) ++width;
    return Wide(value, width);
}

Num Wide(uint32_t value, unsigned width) {
    if (width < 1 || width > 8) throw std::invalid_argument("a number has 1 to 8 bytes");
    return Num(static_cast<uint8_t>(0x80 + width), value, width);
}

Num Omitted() {
    return Num(0x80, 0, 0);
}

Num Absent() {
    Num none = Omitted();
    none.size_ = 0;
    return none;
}

Text::Text(std::string_view text) : bytes_{static_cast<uint8_t>(text.size())} {
    bytes_.Append(reinterpret_cast<const uint8_t*>(text.data()), text.size());
}

Bytes Times(size_t count, const Bytes& bytes) {
    Bytes all;
    while (count-- > 0) all += bytes;
    return all;
}

namespace {

// The text between two quotes; `at` stands behind the first one and ends behind the second.
std::string_view Quoted(std::string_view text, size_t& at) {
    const size_t end = text.find('\'', at);
    if (end == std::string_view::npos) throw std::invalid_argument("quote without an end");
    const std::string_view quoted = text.substr(at, end - at);
    at = end + 1;
    return quoted;
}

uint8_t Digit(char c) {
    const std::string_view digits = "0123456789ABCDEF";
    const size_t digit = digits.find(static_cast<char>(std::toupper(static_cast<uint8_t>(c))));
    if (digit == std::string_view::npos) throw std::invalid_argument("no hexadecimal digit");
    return static_cast<uint8_t>(digit);
}

}  // namespace

Bytes Hex(std::string_view text) {
    Bytes bytes;
    for (size_t at = 0; at < text.size();) {
        const char c = text[at++];
        const char next = at < text.size() ? text[at] : '\0';
        if (c == ' ' || c == '\n' || c == '\t') continue;
        if (c == '#') {
            at = std::min(text.find('\n', at), text.size());
        } else if (c == '\'') {
            const std::string_view raw = Quoted(text, at);
            bytes.Append(reinterpret_cast<const uint8_t*>(raw.data()), raw.size());
        } else if (c == 'n' && next == '\'') {
            bytes += Text(Quoted(text, ++at));
        } else {
            bytes += Bytes{static_cast<uint8_t>(Digit(c) << 4 | Digit(next))};
            ++at;
        }
    }
    return bytes;
}

}  // namespace scan695::builder
