#include "inspector/json_writer.h"

#include <charconv>
#include <cstdio>
#include <ostream>

namespace scan695::inspector {

namespace {

constexpr size_t LINE_LEVEL = 2;  // elements up to this depth begin a line
constexpr int VERSION = 1;        // of the documents, see docs/json.md

// How many bytes a character of UTF-8 has that begins with this one; 0 for none.
size_t LengthFrom(unsigned char first) {
    if (first < 0x80) return 1;
    if (first < 0xC2 || first > 0xF4) return 0;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// Surrogates and what lies above the last character aside, which no path has.
bool IsUtf8(std::string_view text) {
    for (size_t at = 0; at < text.size();) {
        const size_t length = LengthFrom(static_cast<unsigned char>(text[at]));
        if (length == 0 || text.size() - at < length) return false;
        for (size_t i = 1; i < length; ++i)
            if ((text[at + i] & 0xC0) != 0x80) return false;
        at += length;
    }
    return true;
}

}  // namespace

void JsonWriter::Flush() {
    out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
    text_.clear();
}

void JsonWriter::Separate() {
    if (has_key_) {
        has_key_ = false;
        return;
    }
    if (brackets_.empty()) return;
    if (!is_first_) text_ += ',';
    is_first_ = false;
    if (brackets_.size() <= LINE_LEVEL) {
        text_ += '\n';
        if (text_.size() > PIECE) Flush();
    }
}

JsonWriter& JsonWriter::Key(const char* key) {
    Separate();
    Quote(key);
    text_ += ": ";
    has_key_ = true;
    return *this;
}

void JsonWriter::Begin(char bracket) {
    Separate();
    text_ += bracket;
    brackets_ += bracket == '{' ? '}' : ']';
    is_first_ = true;
}

void JsonWriter::End() {
    if (!is_first_ && brackets_.size() <= LINE_LEVEL) text_ += '\n';
    text_ += brackets_.back();
    brackets_.pop_back();
    is_first_ = false;
    if (brackets_.empty()) text_ += '\n';
}

void JsonWriter::Null() {
    Separate();
    text_ += "null";
}

void JsonWriter::Value(bool is_true) {
    Separate();
    text_ += is_true ? "true" : "false";
}

void JsonWriter::Value(std::string_view bytes) {
    Separate();
    Quote(bytes);
}

void JsonWriter::Path(std::string_view path) {
    if (!IsUtf8(path)) return Value(path);
    Separate();
    text_ += '"';
    for (const char c : path) AppendAscii(c);
    text_ += '"';
}

void JsonWriter::Integer(int64_t number) {
    Separate();
    char digits[24];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
    text_.append(digits, end);
}

// Escapes what JSON escapes; bytes above 7F stay.
void JsonWriter::AppendAscii(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", byte);
        text_ += escape;
        return;
    }
    if (c == '"' || c == '\\') text_ += '\\';
    text_ += c;
}

void JsonWriter::Quote(std::string_view bytes) {
    text_ += '"';
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            AppendAscii(c);
        } else {
            text_ += static_cast<char>(0xC0 | byte >> 6);
            text_ += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    text_ += '"';
}

void BeginDocument(JsonWriter& json, const char* kind, const std::string& file) {
    json.BeginObject();
    json.Member("format", std::string("scan695-") + kind);
    json.Member("version", VERSION);
    json.Key("file");
    if (file.empty()) {
        json.Null();
    } else {
        json.Path(file);
    }
}

}  // namespace scan695::inspector
