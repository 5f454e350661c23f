#include "scopes/external_value.h"

#include <optional>
#include <string_view>

#include "input/cursor.h"
#include "input/external_group.h"
#include "input/record_codes.h"
#include "report/report.h"
#include "scopes/scope_state.h"
#include "store/tables.h"

namespace scan695 {

namespace {

uint32_t NofEntries(const ExternalWalk& walk) {
    return walk.entries.Size() / uint32_t{sizeof(ExternalEntry)};
}

ExternalEntry EntryAt(const ExternalWalk& walk, uint32_t number) {
    ExternalEntry entry = {};
    ReadRecord(walk.entries, number, entry);
    return entry;
}

// All that the walk has passed, or those in front of an entry.
void TraceSegments(const ExternalWalk& walk, const uint32_t* entry) {
    if (Report.DebugMode == 0) return;
    const size_t count = entry != nullptr ? walk.nof_segments[*entry] : walk.segments.size();
    for (size_t i = 0; i < count; ++i) Trace("CurrSeg=%u\n", walk.segments[i]);
}

bool HasName(const ExternalEntry& entry, std::string_view name) {
    const PartFrame frame(entry.name_at);
    char text[SYMBOL_NAME_SIZE] = {};
    ReadName(text, sizeof text);
    return name == text;
}

// The number of the entry of that name.
std::optional<uint32_t> FindEntry(const ExternalWalk& walk, std::string_view name) {
    return walk.by_name.Find(HashBytes(name),
                             [&](uint32_t number) { return HasName(EntryAt(walk, number), name); });
}

void TakeSegment(ExternalWalk& walk) {
    const uint32_t segment = ReadExternalSegment();
    if (Report.DebugMode != 0) walk.segments.push_back(segment);
}

// A name that does not come is that of the entry before, or empty, which nobody seeks.
void AddEntry(ExternalWalk& walk, const ExternalEntry& entry, std::string_view name) {
    if (name.empty()) return;
    const auto number = NofEntries(walk);
    const auto matches = [&](uint32_t other) { return HasName(EntryAt(walk, other), name); };
    if (!walk.by_name.AddNew(HashBytes(name), number, matches)) return;
    AppendRecord(walk.entries, entry);
    if (Report.DebugMode != 0)
        walk.nof_segments.push_back(static_cast<uint32_t>(walk.segments.size()));
}

// A group without an address ends the walk.
void TakeGroup(ExternalWalk& walk) {
    const ExternalGroup group = ReadExternalGroup(walk.name, false);
    if (group.has_address)
        AddEntry(walk, {group.name_at, ReadExternalAddress(group)}, walk.name);
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
std::optional<uint32_t> ReadUntil(ExternalWalk& walk, std::string_view name) {
    const PartFrame frame(walk.started ? walk.cursor : Input.ExternalPartOffset);
    walk.started = true;
    std::optional<uint32_t> found;
    while (!found && walk.ending == ExternalWalk::NOT_YET) {
        const uint32_t nof_entries = NofEntries(walk);
        ReadExternalRecord(walk);
        if (NofEntries(walk) != nof_entries && name == walk.name) found = nof_entries;
    }
    walk.cursor = Input.InputCursor;
    return found;
}

}  // namespace

bool FindExternalValue(const char* name, uint32_t& address) {
    if (Input.ExternalPartOffset == 0) return false;
    ExternalWalk& walk = Scopes.Indexes.Externals;
    std::optional<uint32_t> entry = FindEntry(walk, name);
    TraceSegments(walk, entry ? &*entry : nullptr);
    if (!entry && walk.ending == ExternalWalk::NOT_YET) entry = ReadUntil(walk, name);
    if (entry) {
        address = EntryAt(walk, *entry).address;
        return true;
    }
    if (walk.ending == ExternalWalk::AT_OTHER_BYTE)
        Trace("End of External Part, rec=%x\n", uint32_t{walk.end_byte});
    return false;
}

}  // namespace scan695
