#include "tests/types/plain_types.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace scan695::test {

void PlainTypes::Say(const char* format, ...) {
    char line[200];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    trace += line;
}

void PlainTypes::BeginBlock() {
    base += static_cast<uint32_t>(slots.size());
    slots.clear();
    pending_.clear();
    unresolved = 0;
}

uint32_t PlainTypes::Add(uint32_t key) {
    slots.push_back(key);
    const auto number = static_cast<uint32_t>(slots.size()) + 99;
    for (size_t i = 0; i < pending_.size() && unresolved != 0; ++i) {
        if (pending_[i] != key) continue;
        Say("Run UpdateTypes for fst_ti=%u as tk_ti=%u\n", number, key);
        Update();
    }
    return base + number;
}

uint32_t PlainTypes::Find(uint32_t tk_ti) {
    for (size_t i = slots.size(); i > 0; --i)
        if (slots[i - 1] == tk_ti) return base + static_cast<uint32_t>(i) + 99;
    if (updating_) {
        Say("TMAP Update:Cannot find TASKING_type=%d yet\n", static_cast<int>(tk_ti));
        return 0xFFFFFFFF;
    }
    ++unresolved;
    Say("TMAP:Cannot find TASKING_type=%d about 0, storing as unresolved\n",
        static_cast<int>(tk_ti));
    if (std::find(pending_.begin(), pending_.end(), tk_ti) == pending_.end())
        pending_.push_back(tk_ti);
    return tk_ti | 0x800000;
}

PlainTypes::Counts PlainTypes::Patch(uint32_t& field, const char* label) {
    Counts counts = {0, 0};
    for (size_t i = 0; i < pending_.size(); ++i) {
        if (field != (pending_[i] | 0x800000)) continue;
        ++counts.matched;
        const uint32_t found = Find(pending_[i]);
        if (found == 0xFFFFFFFF) continue;
        ++counts.resolved;
        field = found;
        Say("%s:Updated tk_ti=%d as fst_ti=%u\n", label, static_cast<int>(pending_[i]), found);
        if (--unresolved == 0) break;
    }
    return counts;
}

void PlainTypes::WalkList(uint32_t position, uint32_t offset, uint32_t count, bool members) {
    if (offset == 0 || count == 0) return;
    Counts counts = {0, 0};
    for (uint32_t i = 0; i < count && unresolved != 0; ++i, offset += 16) {
        uint32_t field = 0;
        if (offset + 12 <= image.size()) std::memcpy(&field, &image[offset + 8], 4);
        counts = Patch(field, members ? "STR" : "FPP");
        if (counts.resolved != 0) std::memcpy(&image[offset + 8], &field, 4);
    }
    if (!members || counts.matched == 0 || counts.matched != counts.resolved) return;
    bitfields_pending = 1;
    bitfields_struct = position + 100;
}

void PlainTypes::Update() {
    Say("Updating types, unresolved count=%d\n", static_cast<int>(unresolved));
    updating_ = true;
    for (uint32_t p = 0; p < table.size() && unresolved != 0; ++p) {
        auto& u = table[p].u;
        switch (table[p].type_tag) {
            case 0x23:
                Patch(u.pointer.type_index, "PTR");
                break;
            case 0x24:
                Patch(u.array.type_index, "ARR");
                break;
            case 0x25:
            case 0x26:
                WalkList(p, u.structunion.field_offs, u.structunion.nof_elem, true);
                break;
            case 0x28:
                Patch(u.function.type_index, "FUN");
                if (unresolved != 0)
                    WalkList(p, u.function.params_offset, u.function.nof_params, false);
                break;
            case 0x29:
                Patch(u.pointer.type_index, "ATT");
                break;
        }
    }
    updating_ = false;
    Say("End of Updating types, unresolved count=%d\n", static_cast<int>(unresolved));
}

uint32_t PlainTypes::StoreList(const std::vector<FIELDINFO>& list) {
    const size_t length = list.size() * sizeof(FIELDINFO) & 0xFFFF;
    if (length == 0) return 0;
    const size_t offset = image.size();
    image.resize(offset + length);
    std::memcpy(&image[offset], list.data(), length);
    return static_cast<uint32_t>(offset);
}

}  // namespace scan695::test
