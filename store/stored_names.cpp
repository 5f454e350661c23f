#include "store/stored_names.h"

namespace scan695 {

int ReadStoredName(uint32_t name_offs, StoredName& name) {
    ChunkFile& image = Store.FstImage;
    const int32_t position = image.Position();
    const int found = image.Seek(name_offs, ChunkFile::FROM_START);
    if (found != 0) image.Read(name.text, MAX_NAME_LENGTH);
    return image.Seek(position, ChunkFile::FROM_START) != 0 ? found : 0;
}

bool NameIndex::HasName(uint32_t name_offs, std::string_view name) {
    StoredName stored;
    return ReadStoredName(name_offs, stored) != 0 && name == stored.text;
}

bool NameIndex::Contains(std::string_view name) const {
    const auto matches = [name](uint32_t name_offs) { return HasName(name_offs, name); };
    return offsets_.Find(HashBytes(name), matches).has_value();
}

int NameIndex::Add(uint32_t name_offs) {
    StoredName stored;
    if (ReadStoredName(name_offs, stored) == 0) return 0;
    const std::string_view name = stored.text;
    const auto matches = [name](uint32_t other) { return HasName(other, name); };
    offsets_.AddNew(HashBytes(name), name_offs, matches);
    return 1;
}

}  // namespace scan695
