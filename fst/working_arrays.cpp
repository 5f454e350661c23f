#include "fst/working_arrays.h"

#include <cstring>

#include "fst/image_cache.h"
#include "fst/quick_sort.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

WorkState Work;

void FreePostProcessWork() {
    Work.SortIndex.reset();
    Work.TypeWork.reset();
    Work.ModuleWork.reset();
    Work.BlockWork.reset();
    Work.SymbolWork.reset();
    Work.SymbolKeys.reset();
    Work.LineWork.reset();
    Work.NameWork.reset();
    Work.CodeWork.reset();
    Work.FilterWork.reset();
    Work.FoundTypes.reset();
    Work.Ranges.Free();
    Work.CompareCallback = nullptr;
    CloseImageCache();
}

void* AllocateEntries(const char* operation, uint32_t count, size_t entry_size) {
    void* entries = std::calloc(count, entry_size);
    if (entries == nullptr) {
        if (operation != nullptr) Trace("%s(%d) -> ", operation, static_cast<int32_t>(count));
        ReportAndStop(ERROR_NO_MEMORY);
    }
    return entries;
}

void LoadRecords(ChunkFile& table, void* entries, size_t entry_size, uint32_t record_size,
                 uint32_t first, uint32_t count) {
    if (table.Seek(int64_t{record_size} * first, ChunkFile::FROM_START) == 0)
        ReportAndStop(ERROR_READ_TEMPORARY);
    auto* entry = static_cast<uint8_t*>(entries);
    for (uint32_t i = 0; i < count; ++i, entry += entry_size) {
        ProgressTick();
        if (table.Read(entry, static_cast<int32_t>(record_size)) == 0)
            ReportAndStop(ERROR_READ_TEMPORARY);
    }
}

void init_symbols(uint32_t first, uint32_t count) {
    Work.SymbolKeys.reset(
        static_cast<SymbolEntry*>(AllocateEntries("init_symbols", count, sizeof(SymbolEntry))));
    SeekImage(Store.Header.symbols_offs + uint64_t{first} * sizeof(SYMINFO));
    for (uint32_t i = 0; i < count; ++i) {
        ProgressTick();
        SYMINFO symbol;
        ReadFromImage(&symbol, sizeof symbol);
        Work.SymbolKeys[i] = {symbol.name_offs, symbol.value, symbol.mem_type};
    }
    SeekImageEnd();
}

void init_names(const void* entries, size_t entry_size, uint32_t count) {
    Work.NameWork.reset(
        static_cast<uint32_t*>(AllocateEntries("init_names", count, sizeof(uint32_t))));
    const auto* entry = static_cast<const uint8_t*>(entries);
    for (uint32_t i = 0; i < count; ++i, entry += entry_size) {
        ProgressTick();
        std::memcpy(&Work.NameWork[i], entry, sizeof(uint32_t));
        SeekImage(Work.NameWork[i]);  // stops at an offset outside
    }
    SeekImageEnd();
}

void init_idx(uint32_t count) {
    Work.SortIndex.reset(
        static_cast<uint32_t*>(AllocateEntries("init_idx", count, sizeof(uint32_t))));
    for (uint32_t i = 0; i < count; ++i) Work.SortIndex[i] = i;
}

void SortRecords(CompareFunction compare, uint32_t count) {
    init_idx(count);
    Work.CompareCallback = compare;
    if (count >= 2) QuickSortIndex(0, static_cast<int32_t>(count) - 1);
}

void WriteIndex(uint32_t base, uint32_t count) {
    for (uint32_t i = 0; i < count; ++i) {
        const uint32_t number = Work.SortIndex[i] + base;
        WriteToImage(&number, sizeof number);
    }
    Work.SortIndex.reset();
}

void WriteTable(const void* entries, size_t entry_size, uint32_t record_size, uint32_t count) {
    const auto* entry = static_cast<const uint8_t*>(entries);
    for (uint32_t i = 0; i < count; ++i, entry += entry_size) {
        ProgressTick();
        WriteToImage(entry, record_size);
    }
}

uint32_t SeekImageEnd() {
    if (Store.FstImage.Seek(0, ChunkFile::FROM_END) == 0) ReportAndStop(ERROR_READ_TEMPORARY);
    return static_cast<uint32_t>(Store.FstImage.Position());
}

void SeekImage(uint64_t offset) {
    if (Store.FstImage.Seek(static_cast<int64_t>(offset), ChunkFile::FROM_START) == 0)
        ReportAndStop(ERROR_READ_TEMPORARY);
}

void ReadFromImage(void* buffer, uint32_t size) {
    std::memset(buffer, 0, size);
    if (Store.FstImage.Read(buffer, static_cast<int32_t>(size)) == 0)
        ReportAndStop(ERROR_READ_TEMPORARY);
}

void WriteToImage(const void* bytes, uint32_t size) {
    if (Store.FstImage.Write(bytes, static_cast<int32_t>(size)) == 0)
        ReportAndStop(ERROR_NO_MEMORY);
}

}  // namespace scan695
