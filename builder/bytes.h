// Byte strings of which object files are made in tests and samples: plain bytes, numbers in every
// form of the format, and names. All are values; `+` joins them.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace scan695::builder {

class Bytes {
  public:
    Bytes() = default;
    Bytes(std::initializer_list<uint8_t> bytes) : bytes_(bytes) {}
    explicit Bytes(std::vector<uint8_t> bytes) : bytes_(std::move(bytes)) {}

    size_t size() const { return bytes_.size(); }
    bool empty() const { return bytes_.empty(); }
    auto begin() const { return bytes_.begin(); }
    auto end() const { return bytes_.end(); }
    const uint8_t* data() const { return bytes_.data(); }
    uint8_t& operator[](size_t index) { return bytes_.at(index); }
    uint8_t operator[](size_t index) const { return bytes_.at(index); }
    const std::vector<uint8_t>& vector() const { return bytes_; }
    operator const std::vector<uint8_t>&() const { return bytes_; }

    void Append(const uint8_t* bytes, size_t count);
    Bytes& operator+=(const Bytes& more);
    // The first `count` bytes, fewer where there are fewer.
    Bytes First(size_t count) const;

    friend Bytes operator+(Bytes left, const Bytes& right) { return std::move(left += right); }
    friend bool operator==(const Bytes&, const Bytes&) = default;

  private:
    std::vector<uint8_t> bytes_;
};

// One number field. An integer turns into its shortest form by itself; negative ones are 32-bit
// two's complement. The functions below give the other forms.
class Num {
  public:
    template <std::integral T>
    Num(T value) : Num(Shortest(static_cast<uint32_t>(value))) {}
    operator Bytes() const;

  private:
    friend Num Wide(uint32_t value, unsigned width);
    friend Num Omitted();
    friend Num Absent();
    static Num Shortest(uint32_t value);
    Num(uint8_t lead, uint32_t value, unsigned width);

    std::array<uint8_t, 9> bytes_{};
    uint8_t size_ = 0;
};

// `width` bytes behind 80 + width, minimal or not: 1 to 4 are good, 5 to 8 are refused by readers.
Num Wide(uint32_t value, unsigned width);
// The byte 80: the field is there and has no value.
Num Omitted();
// No byte at all.
Num Absent();

inline Bytes Numbers() {
    return {};
}
template <typename... More>
Bytes Numbers(const Num& first, const More&... more) {
    return Bytes(first) + Numbers(more...);
}

// A name field: a length byte and the text. A length of 128 and more, which no reader takes for a
// name, is written as its low 8 bits.
class Text {
  public:
    Text(const char* text) : Text(std::string_view(text)) {}
    Text(const std::string& text) : Text(std::string_view(text)) {}
    Text(std::string_view text);
    // Any bytes in the place of a name; `Text(Bytes{})` is no name.
    explicit Text(Bytes bytes) : bytes_(std::move(bytes)) {}
    operator const Bytes&() const { return bytes_; }

  private:
    Bytes bytes_;
};

// Bytes written as text: pairs of hexadecimal digits, 'abc' for the characters themselves, n'abc'
// for a name with its length byte, # for a comment up to the end of the line; blanks stand where
// they please. Throws std::invalid_argument on anything else.
Bytes Hex(std::string_view text);

// `count` times the same bytes.
Bytes Times(size_t count, const Bytes& bytes);

}  // namespace scan695::builder
