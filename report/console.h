// Lines on standard output. Most of what a debug run does is to print them, so they are put
// together here and handed to the stream in blocks; their formats are checked when the system is
// compiled.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace scan695 {

// Bytes that the text of a line may take, values of %s apart.
inline constexpr size_t LINE_ROOM = 512;
inline constexpr size_t NUMBER_ROOM = 11;

// What stands between the % and the letter of a conversion.
struct Conversion {
    bool prefix = false;  // # in front of x: 0x unless the number is 0
    bool zeros = false;   // 0 in front of the width: fills with zeros, not with blanks
    uint8_t width = 0;    // one digit
    char letter = '\0';
};

// Reads a conversion behind its % and passes it.
constexpr Conversion ReadConversion(const char*& format) {
    Conversion conversion;
    if (*format == '#') conversion.prefix = true, ++format;
    if (*format == '0') conversion.zeros = true, ++format;
    if (*format >= '1' && *format <= '9') conversion.width = static_cast<uint8_t>(*format++ - '0');
    if (*format != '\0') conversion.letter = *format++;
    return conversion;
}

enum class LineValueKind { NONE, NUMBER, TEXT };

template <class Value>
constexpr LineValueKind KIND_OF = std::is_convertible_v<Value, const char*> ? LineValueKind::TEXT
                                  : (std::integral<Value> ||
                                     std::is_enum_v<Value>)&&sizeof(Value) <= sizeof(uint32_t)
                                      ? LineValueKind::NUMBER
                                      : LineValueKind::NONE;

// The value of one conversion.
union LineValue {
    LineValue(const char* value) : text(value) {}
    template <class Value>
    requires(KIND_OF<Value> == LineValueKind::NUMBER) LineValue(Value value)
        : number(static_cast<uint32_t>(value)) {}

    const char* text;
    uint32_t number;
};

// The form of a line, as printf has it: %s, %c, and %u, %d, %x, %X for numbers of up to 32 bits. A
// form that does not suit its values does not compile.
template <class... Values>
class LineForm {
  public:
    consteval LineForm(const char* text) : text_(text) {
        const LineValueKind kinds[] = {KIND_OF<Values>..., LineValueKind::NONE};
        const LineValueKind* next = kinds;
        size_t room = 0;
        while (*text != '\0') {
            ++room;
            if (*text++ != '%') continue;
            const Conversion conversion = ReadConversion(text);
            Require(KindFor(conversion) != LineValueKind::NONE && KindFor(conversion) == *next++);
            room += NUMBER_ROOM;
        }
        Require(next == kinds + sizeof...(Values) && room <= LINE_ROOM);
    }

    const char* Text() const { return text_; }

  private:
    static consteval void Require(bool suits) {
        if (!suits) throw "the form of a console line does not suit its values";
    }
    static consteval LineValueKind KindFor(const Conversion& c) {
        const bool plain = !c.prefix && !c.zeros && c.width == 0;
        switch (c.letter) {
            case 's':
                return plain ? LineValueKind::TEXT : LineValueKind::NONE;
            case 'c':
                return plain ? LineValueKind::NUMBER : LineValueKind::NONE;
            case 'd':
                return !c.prefix && !c.zeros ? LineValueKind::NUMBER : LineValueKind::NONE;
            case 'u':
            case 'X':
                return !c.prefix ? LineValueKind::NUMBER : LineValueKind::NONE;
            case 'x':
                return !c.prefix || c.width == 0 ? LineValueKind::NUMBER : LineValueKind::NONE;
            default:
                return LineValueKind::NONE;
        }
    }

    const char* text_;
};

// A run's lines are collected, where standard output collects them too: a stream that shows each
// line at once goes on to do so. Outside a run every line goes straight to the stream.
void StartCollectingLines();
// Hands on what is collected, and goes on or stops to collect.
void FlushLines();
void StopCollectingLines();

// Appends a line, or a part of one.
void AppendLine(const char* form, const LineValue* values);

template <class... Values>
inline void AppendLineOf(const char* form, Values... values) {
    const LineValue list[] = {LineValue(values)..., LineValue(0U)};
    AppendLine(form, list);
}

}  // namespace scan695
