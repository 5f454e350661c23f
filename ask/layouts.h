// Layouts of structs, unions and enumerations: members with offsets, sizes and bit positions, and
// the holes between them.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "inspector/json_writer.h"
#include "inspector/lookup.h"

namespace scan695::ask {

// Bits that no member covers, from bit `bit_offset` of the byte at `offset` on.
struct Hole {
    uint64_t offset;
    uint32_t bit_offset;
    uint64_t bits;
};

// A member, or an item of an enumeration, which has a value alone.
struct Member {
    std::string name;
    uint32_t type_index = 0;
    uint32_t value = 0;      // offset in bytes; of an item its value
    uint64_t begin_bit = 0;  // from the beginning of the struct
    uint64_t bits = 0;       // 0 for what has no size
    bool is_bitfield = false;
};

struct Layout {
    inspector::FoundType found;
    std::vector<uint32_t> types;  // the indexes of all types that are laid out like this
    uint32_t size = 0;            // in bytes
    std::vector<Member> members;
    std::vector<Hole> holes;  // ascending
    std::string text;         // in C, offsets and sizes in comments, but for the closing line
};

// True for the types that have a layout.
bool HasLayout(const TYPEINFO& type);

Layout LayoutOf(const inspector::Fst& fst, const inspector::FoundType& found);

// Layouts by type index, equal ones once.
std::vector<Layout> AllLayouts(const inspector::Fst& fst);

// The layouts of a name, which is a tag, "struct tag", or a type index, and then those that their
// members lead to, nested and through pointers. A tag is taken as it is written, else without
// regard to case, else as a pattern with "*".
std::vector<Layout> NamedLayouts(const inspector::Fst& fst, const std::string& name);

// Makes `text` of the rest. Names are the bytes of the file.
std::string LayoutText(const inspector::Fst& fst, const Layout& layout);

void PrintLayout(const Layout& layout, std::ostream& out);
void WriteLayout(const inspector::Fst& fst, const Layout& layout, inspector::JsonWriter& json);

}  // namespace scan695::ask
