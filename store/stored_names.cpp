#include "store/stored_names.h"

namespace scan695 {

std::optional<StoredName> ReadStoredName(uint32_t name_offs) {
    StoredName name;
    if (!Store.FstImage.ReadAt(name_offs, name.text, MAX_NAME_LENGTH)) return std::nullopt;
    return name;
}

bool NameIndex::HasName(uint32_t name_offs, std::string_view name) {
    const auto stored = ReadStoredName(name_offs);
    return stored && name == stored->text;
}

bool NameIndex::Contains(std::string_view name) const {
    const auto matches = [name](uint32_t name_offs) { return HasName(name_offs, name); };
    return offsets_.Find(HashBytes(name), matches).has_value();
}

bool NameIndex::Add(uint32_t name_offs) {
    const auto stored = ReadStoredName(name_offs);
    if (!stored) return false;
    const std::string_view name = stored->text;
    const auto matches = [name](uint32_t other) { return HasName(other, name); };
    offsets_.AddNew(HashBytes(name), name_offs, matches);
    return true;
}

}  // namespace scan695
