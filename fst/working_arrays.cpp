#include "fst/working_arrays.h"

#include <cstring>
#include <numeric>

#include "fst/image_access.h"
#include "report/report.h"

namespace scan695 {

WorkState Work;

void FreePostProcessWork() {
    Work = {};
}

void StopAllocation(const char* operation, uint32_t count) {
    if (operation != nullptr) Trace("%s(%d) -> ", operation, static_cast<int32_t>(count));
    ReportAndStop(ERROR_NO_MEMORY);
}

void LoadRecords(const ChunkFile& table, void* entries, size_t entry_size, uint32_t record_size,
                 uint32_t first, uint32_t count) {
    uint64_t offset = uint64_t{record_size} * first;
    if (offset > table.Size()) ReportAndStop(ERROR_READ_TEMPORARY);
    auto* entry = static_cast<uint8_t*>(entries);
    for (uint32_t i = 0; i < count; ++i, entry += entry_size, offset += record_size) {
        ProgressTick();
        table.ReadAt(offset, entry, record_size);
    }
}

void init_symbols(uint32_t first, uint32_t count) {
    AllocateEntries(Work.SymbolKeys, "init_symbols", count);
    SymbolEntry* entry = Work.SymbolKeys.data();
    ForEachRecord<SYMINFO>(Store.Header.symbols_offs, first, count, [&](const SYMINFO& symbol) {
        ProgressTick();
        *entry++ = {symbol.name_offs, symbol.value, symbol.mem_type};
    });
}

void init_names(const void* entries, size_t entry_size, uint32_t count) {
    AllocateEntries(Work.NameWork, "init_names", count);
    const auto* entry = static_cast<const uint8_t*>(entries);
    for (uint32_t i = 0; i < count; ++i, entry += entry_size) {
        ProgressTick();
        std::memcpy(&Work.NameWork[i], entry, sizeof(uint32_t));
        RequireInImage(Work.NameWork[i]);
    }
}

void SortRecords(CompareFunction compare, uint32_t first, uint32_t count) {
    AllocateEntries(Work.SortIndex, "init_idx", count);
    std::iota(Work.SortIndex.begin(), Work.SortIndex.end(), first);
    QuickSortIndex(Work.SortIndex, compare);
}

void WriteIndex(uint32_t base) {
    for (uint32_t& number : Work.SortIndex) number += base;
    WriteToImage(Work.SortIndex.data(),
                 static_cast<uint32_t>(Work.SortIndex.size() * sizeof(uint32_t)));
    FreeEntries(Work.SortIndex);
}

void WriteTable(const void* entries, size_t entry_size, uint32_t record_size, uint32_t count) {
    const auto* entry = static_cast<const uint8_t*>(entries);
    for (uint32_t i = 0; i < count; ++i, entry += entry_size) {
        ProgressTick();
        WriteToImage(entry, record_size);
    }
}

}  // namespace scan695
