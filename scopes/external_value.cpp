#include "scopes/external_value.h"

#include "input/cursor.h"
#include "input/external_group.h"
#include "input/record_codes.h"
#include "report/report.h"
#include "scopes/scope_state.h"

namespace scan695 {

namespace {

void TraceSegments(const ExternalWalk& walk, uint32_t count) {
    if (Report.DebugMode == 0) return;
    for (uint32_t i = 0; i < count; ++i) Trace("CurrSeg=%u\n", walk.segments[i]);
}

std::string_view EntryName(const ExternalWalk& walk, const ExternalEntry& entry) {
    return std::string_view(walk.names).substr(entry.name_at, entry.name_length);
}

// Tells whether an entry has the name.
auto HasName(const ExternalWalk& walk, std::string_view name) {
    return [&walk, name](uint32_t number) { return EntryName(walk, walk.entries[number]) == name; };
}

const ExternalEntry* FindEntry(const ExternalWalk& walk, std::string_view name) {
    const auto found = walk.by_name.Find(HashBytes(name), HasName(walk, name));
    return found ? &walk.entries[*found] : nullptr;
}

void TakeSegment(ExternalWalk& walk) {
    const uint32_t segment = ReadExternalSegment();
    if (Report.DebugMode != 0) walk.segments.push_back(segment);
    ++walk.nof_segments;
}

void AddEntry(ExternalWalk& walk, std::string_view name, uint32_t address) {
    const auto number = static_cast<uint32_t>(walk.entries.size());
    if (!walk.by_name.AddNew(HashBytes(name), number, HasName(walk, name))) return;
    walk.entries.push_back({static_cast<uint32_t>(walk.names.size()),
                            static_cast<uint32_t>(name.size()), address, walk.nof_segments});
    walk.names += name;
}

// A group without an address ends the walk.
void TakeGroup(ExternalWalk& walk) {
    const ExternalGroup group = ReadExternalGroup(walk.name, false);
    if (group.has_address)
        AddEntry(walk, walk.name, ReadExternalAddress(group));
    else
        walk.ending = ExternalWalk::AT_OPEN_GROUP;
}

void ReadExternalRecord(ExternalWalk& walk) {
    const uint8_t byte = ReadByte();
    if (byte == BYTE_SB) {
        TakeSegment(walk);
    } else if (byte == BYTE_NI) {
        TakeGroup(walk);
    } else {
        if (walk.nof_records == 0) UnexpectedRecord();
        walk.ending = ExternalWalk::AT_OTHER_BYTE;
        walk.end_byte = byte;
    }
    ++walk.nof_records;
}

// Reads on until the name has come or the walk has ended.
const ExternalEntry* ReadUntil(ExternalWalk& walk, std::string_view name) {
    const PartFrame frame(walk.started ? walk.cursor : Input.ExternalPartOffset);
    walk.started = true;
    const ExternalEntry* found = nullptr;
    while (found == nullptr && walk.ending == ExternalWalk::NOT_YET) {
        const size_t nof_entries = walk.entries.size();
        ReadExternalRecord(walk);
        if (walk.entries.size() != nof_entries && EntryName(walk, walk.entries.back()) == name)
            found = &walk.entries.back();
    }
    walk.cursor = Input.InputCursor;
    return found;
}

}  // namespace

bool FindExternalValue(const char* name, uint32_t& address) {
    if (Input.ExternalPartOffset == 0) return false;
    ExternalWalk& walk = Scopes.Indexes.Externals;
    const ExternalEntry* entry = FindEntry(walk, name);
    TraceSegments(walk, entry != nullptr ? entry->nof_segments : walk.nof_segments);
    if (entry == nullptr && walk.ending == ExternalWalk::NOT_YET) entry = ReadUntil(walk, name);
    if (entry != nullptr) {
        address = entry->address;
        return true;
    }
    if (walk.ending == ExternalWalk::AT_OTHER_BYTE)
        Trace("End of External Part, rec=%x\n", uint32_t{walk.end_byte});
    return false;
}

}  // namespace scan695
