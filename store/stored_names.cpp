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

bool NameIndex::Contains(std::string_view name) {
    waiting_.TakeAll([this](uint32_t name_offs) { TakeIn(name_offs); });
    const auto matches = [name](uint32_t name_offs) { return HasName(name_offs, name); };
    return offsets_.Find(HashBytes(name), matches).has_value();
}

void NameIndex::TakeIn(uint32_t name_offs) {
    const StoredName stored = ReadStoredName(name_offs).value_or(StoredName());
    const std::string_view name = stored.text;
    const auto matches = [name](uint32_t other) { return HasName(other, name); };
    offsets_.AddNew(HashBytes(name), name_offs, matches);
}

}  // namespace scan695
