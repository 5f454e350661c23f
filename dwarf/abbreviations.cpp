#include "dwarf/abbreviations.h"

namespace scan695::dwarf {

uint32_t Abbreviations::Number(const std::string& shape) {
    const auto next = static_cast<uint32_t>(numbers_.size() + 1);
    const auto [entry, is_new] = numbers_.try_emplace(shape, next);
    if (is_new) {
        PutUleb(bytes_, next);
        bytes_.insert(bytes_.end(), shape.begin(), shape.end());
        Put16(bytes_, 0);
    }
    return entry->second;
}

Bytes Abbreviations::Table() const {
    Bytes table = bytes_;
    Put8(table, 0);
    return table;
}

}  // namespace scan695::dwarf
