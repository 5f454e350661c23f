#include "scopes/lifetime_fixup.h"

#include <algorithm>

#include "report/report.h"
#include "scopes/scope_state.h"
#include "store/tables.h"
#include "types/update_types.h"

namespace scan695 {

namespace {

constexpr uint32_t MAX_STORED_LOCATIONS = MAX_ITEM_SIZE / sizeof(LOCINFO);

void TraceChecked(uint32_t symbol) {
    SYMINFO record = {};
    ReadRecord(Store.BlockSymbolTable, symbol, record);
    Trace("  checking symbol: addr=%x, sc=%u, tidx=%u\n", record.value,
          uint32_t{record.storage_class}, record.type_index);
}

// Gives true when no later block can change the lifetime again.
bool CloseLifetime(const OpenLifetime& lifetime, uint32_t end_address) {
    LOCINFO location = {};
    if (!Store.FstImage.ReadAt(lifetime.place, &location, sizeof location))
        ReportAndStop(ERROR_READ_TEMPORARY);
    if (location.end_address != OPEN_END) return lifetime.stored;
    location.end_address = end_address;
    if (!Store.FstImage.WriteAt(lifetime.place, &location, sizeof location))
        ReportAndStop(ERROR_READ_TEMPORARY);
    NoteWrite(lifetime.place);  // which may lie behind a list that is shorter than its count
    Trace("   updating LOCINFO ending address=%x\n", end_address);
    return lifetime.stored && end_address != OPEN_END;
}

// The first lifetime of that symbol or a later one.
auto FirstOf(std::vector<OpenLifetime>& lifetimes, uint32_t symbol) {
    return std::ranges::lower_bound(lifetimes, symbol, {}, &OpenLifetime::symbol);
}

// Stands in for a block that has no end to give: all would stay as it is, but the place of an
// overlong list may be out of reach.
void TryOverlong(uint32_t first_symbol) {
    std::vector<OpenLifetime>& overlong = Scopes.OverlongLifetimes;
    for (auto next = FirstOf(overlong, first_symbol); next != overlong.end(); ++next)
        CloseLifetime(*next, OPEN_END);
}

}  // namespace

void WatchLifetime(uint32_t symbol, const SYMINFO& record, std::span<const LOCINFO> locations) {
    const bool stored = locations.size() <= MAX_STORED_LOCATIONS;
    if (stored && locations.back().end_address != OPEN_END) return;
    const uint32_t place = record.locinfo_offs + (record.nof_locs - 1U) * uint32_t{sizeof(LOCINFO)};
    Scopes.OpenLifetimes.push_back({symbol, place, stored});
    if (!stored) Scopes.OverlongLifetimes.push_back(Scopes.OpenLifetimes.back());
}

void CloseLifetimes(uint32_t first_symbol, uint32_t end_address) {
    if (end_address == OPEN_END && Report.DebugMode == 0) return TryOverlong(first_symbol);
    std::vector<OpenLifetime>& open = Scopes.OpenLifetimes;
    auto next = FirstOf(open, first_symbol);
    auto kept = next;
    const uint32_t end_symbol = Store.Header.nof_block_symbols;
    for (uint32_t symbol = first_symbol; symbol < end_symbol; ++symbol) {
        if (Report.DebugMode != 0) {
            TraceChecked(symbol);
        } else {
            if (next == open.end()) break;
            symbol = next->symbol;
        }
        if (next == open.end() || next->symbol != symbol) continue;
        const OpenLifetime lifetime = *next++;
        if (!CloseLifetime(lifetime, end_address)) *kept++ = lifetime;
    }
    open.erase(kept, open.end());
}

}  // namespace scan695
