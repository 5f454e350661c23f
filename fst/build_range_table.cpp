#include "fst/build_range_table.h"

#include "fst/add_range.h"
#include "fst/image_cache.h"
#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

constexpr uint32_t CLOSED_GAP = 32;  // gaps below it are padding between functions

// What the points of length 1 came from.
struct PointSources {
    bool lines_used = false;
    bool symbols_used = false;
};

bool HasCodeWithoutModule() {
    ChunkFile& table = Store.CodeTable;
    if (table.Seek(0, ChunkFile::FROM_START) == 0) ReportAndStop(ERROR_READ_TEMPORARY);
    bool found = false;
    for (uint32_t i = 0; i < Store.Header.nof_code; ++i) {
        CODEINFO head = {};
        if (table.Read(&head, sizeof head) == 0 ||
            table.Seek(head.length, ChunkFile::FROM_CURRENT) == 0)
            ReportAndStop(ERROR_READ_TEMPORARY);
        if (head.mem_type != MEM_CODE || head.module != -1) continue;
        Trace("Code without module: addr=%x, lng=%u\n", head.address, head.length);
        found = true;
    }
    return found;
}

void AddBlocks() {
    for (uint32_t i = 0; i < Store.Header.nof_blocks; ++i) {
        BLOCKINFO block;
        GetBlockRecord(i, &block);
        AddRange(block.address, block.size, block.module);
        Trace("use block_%d: mod_idx=%d, addr=%#x, length=%#x\n", static_cast<int32_t>(i),
              block.module, block.address, block.size);
    }
}

// Calls `add` for `count` records of a section of the image, from record `first` on.
template <class Record, class Action>
void ForEachRecord(uint32_t section, uint32_t first, uint32_t count, Action add) {
    if (count == 0) return;
    SeekImage(section + uint64_t{first} * sizeof(Record));
    for (uint32_t i = 0; i < count; ++i) {
        Record record;
        ReadFromImage(&record, sizeof record);
        add(record);
    }
}

void AddLines(PointSources& sources) {
    for (uint32_t i = 0; i < Store.Header.nof_modules; ++i) {
        const MODULEINFO& module = Work.ModuleWork[i];
        if (module.nof_lines == 0) continue;
        sources.lines_used = true;
        ForEachRecord<LINEINFO>(
            Store.Header.lines_offs, module.first_line, module.nof_lines,
            [i](const LINEINFO& line) { AddRange(line.address, 1, static_cast<int32_t>(i)); });
    }
}

void AddCodeSymbol(const SYMINFO& symbol, int32_t module, PointSources& sources) {
    if (symbol.mem_type != MEM_CODE) return;
    AddRange(symbol.value, 1, module);
    sources.symbols_used = true;
}

void AddCodeSymbols(PointSources& sources) {
    const FstHeader& header = Store.Header;
    ForEachRecord<SYMINFO>(
        header.symbols_offs, 0, header.nof_global_symbols,
        [&](const SYMINFO& symbol) { AddCodeSymbol(symbol, symbol.module, sources); });
    for (uint32_t i = 0; i < header.nof_modules; ++i) {
        const MODULEINFO& module = Work.ModuleWork[i];
        ForEachRecord<SYMINFO>(header.symbols_offs, module.first_symbol, module.nof_symbols,
                               [&](const SYMINFO& symbol) {
                                   AddCodeSymbol(symbol, static_cast<int32_t>(i), sources);
                               });
    }
}

// Drops the points that fused with nothing, and closes small gaps: up to the entry that stood
// behind, even where that one goes in its turn.
void DropPointsAndCloseGaps(bool drop_points) {
    RangeTable& table = Work.Ranges;
    int32_t kept = 0;
    for (int32_t i = 0; i < table.Count(); ++i) {
        RANGEINFO entry = table[i];
        if (drop_points && entry.length <= 1) continue;
        if (i + 1 < table.Count()) {
            const uint32_t to_next = table[i + 1].address - entry.address;
            if (to_next - entry.length < CLOSED_GAP) entry.length = to_next;
        }
        table[kept++] = entry;
    }
    table.Remove(kept, table.Count() - 1);
    MergeNeighbours(0, table.Count() - 1);
}

void WriteRanges() {
    RangeTable& table = Work.Ranges;
    Store.Header.ranges_offs = SeekImageEnd();
    Store.Header.nof_ranges = static_cast<uint32_t>(table.Count());
    for (int32_t i = 0; i < table.Count(); ++i) WriteToImage(&table[i], sizeof(RANGEINFO));
    table.Free();
}

}  // namespace

void BuildRangeTable() {
    if (Store.Header.nof_modules == 0) return;
    Trace("Creating module range table\n");
    if (!Work.Ranges.Allocate()) ReportAndStop(ERROR_NO_MEMORY);
    PointSources sources;
    if (HasCodeWithoutModule()) {
        Trace("Using blocks to build range table\n");
        AddBlocks();
        Trace("Using lines to build range table\n");
        AddLines(sources);
        Trace("Using code symbols to build range table\n");
        AddCodeSymbols(sources);
    }
    DropPointsAndCloseGaps(sources.lines_used || sources.symbols_used);
    WriteRanges();
}

}  // namespace scan695
