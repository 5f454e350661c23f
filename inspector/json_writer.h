// Writes JSON, which every answer of the command can be printed as: members in the order of the
// calls, one element of an outer list on a line, names as UTF-8.
#pragma once

#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace scan695::inspector {

class JsonWriter {
  public:
    // Writes to `out`, which must live longer. The document is complete after the last End.
    explicit JsonWriter(std::ostream& out) : out_(out) {}
    ~JsonWriter() { Flush(); }
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    // In an object the next value or Begin belongs to the key.
    JsonWriter& Key(const char* key);

    void BeginObject() { Begin('{'); }
    void BeginArray() { Begin('['); }
    void End();  // of the object or array begun last

    void Null();
    void Value(bool is_true);
    void Value(const char* text) { Value(std::string_view(text)); }
    // Bytes of the input: those above 7F are taken as Latin-1.
    void Value(std::string_view bytes);
    void Value(const std::string& bytes) { Value(std::string_view(bytes)); }
    // A path: kept where it is UTF-8, else as above.
    void Path(std::string_view path);
    template <std::integral Number>
    void Value(Number number) {
        Integer(static_cast<int64_t>(number));
    }
    template <class Item>
    void Value(const std::optional<Item>& item) {
        if (item) {
            Value(*item);
        } else {
            Null();
        }
    }

    template <class Item>
    void Member(const char* key, const Item& item) {
        Key(key);
        Value(item);
    }

  private:
    static constexpr size_t PIECE = 1 << 16;

    void Begin(char bracket);
    void Separate();
    void Integer(int64_t number);
    void AppendAscii(char c);
    void Quote(std::string_view bytes);
    void Flush();

    std::ostream& out_;
    std::string text_;      // not yet in `out_`
    std::string brackets_;  // those that are open, as they close
    bool is_first_ = true;  // in the object or array begun last
    bool has_key_ = false;
};

// Begins the document of an answer: "format", which is "scan695-" and the kind, "version", "file".
void BeginDocument(JsonWriter& json, const char* kind, const std::string& file);

}  // namespace scan695::inspector
