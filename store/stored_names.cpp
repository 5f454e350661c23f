#include "store/stored_names.h"

namespace scan695 {

int ReadStoredName(uint32_t name_offs, StoredName& name) {
    ChunkFile& image = Store.FstImage;
    const int32_t position = image.Position();
    const int found = image.Seek(name_offs, ChunkFile::FROM_START);
    if (found != 0) image.Read(name.text, MAX_NAME_LENGTH);
    return image.Seek(position, ChunkFile::FROM_START) != 0 ? found : 0;
}

// FNV-1a.
uint32_t HashName(std::string_view name) {
    uint32_t hash = 0x811C9DC5U;
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 0x01000193U;
    return hash;
}

bool NameIndex::HasName(uint32_t name_offs, std::string_view name) {
    StoredName stored;
    return ReadStoredName(name_offs, stored) != 0 && name == stored.text;
}

bool NameIndex::Contains(std::string_view name) const {
    const auto matches = [name](uint32_t name_offs) { return HasName(name_offs, name); };
    return offsets_.Find(HashName(name), matches) != MatchIndex::NONE;
}

int NameIndex::Add(uint32_t name_offs) {
    StoredName stored;
    if (ReadStoredName(name_offs, stored) == 0) return 0;
    const std::string_view name = stored.text;
    const auto matches = [name](uint32_t other) { return HasName(other, name); };
    offsets_.AddNew(HashName(name), name_offs, matches);
    return 1;
}

}  // namespace scan695
