#include "fst/build_range_table.h"

#include "fst/image_access.h"
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
    bool found = false;
    uint32_t offset = 0;
    for (uint32_t i = 0; i < Store.Header.nof_code; ++i) {
        CODEINFO head = {};
        if (!Store.CodeTable.ReadAt(offset, &head, sizeof head))
            ReportAndStop(ERROR_READ_TEMPORARY);
        offset += uint32_t{sizeof head} + head.length;
        if (head.mem_type != MEM_CODE || head.module != -1) continue;
        Trace("Code without module: addr=%x, lng=%u\n", head.address, head.length);
        found = true;
    }
    return found;
}

void AddBlocks() {
    for (uint32_t i = 0; i < Store.Header.nof_blocks; ++i) {
        const BLOCKINFO block = GetBlockRecord(i);
        Work.Ranges.AddRange(block.address, block.size, block.module);
        Trace("use block_%d: mod_idx=%d, addr=%#x, length=%#x\n", static_cast<int32_t>(i),
              block.module, block.address, block.size);
    }
}

void AddLines(PointSources& sources) {
    for (uint32_t i = 0; i < Store.Header.nof_modules; ++i) {
        const MODULEINFO& module = Work.ModuleWork[i];
        if (module.nof_lines == 0) continue;
        sources.lines_used = true;
        ForEachRecord<LINEINFO>(Store.Header.lines_offs, module.first_line, module.nof_lines,
                                [i](const LINEINFO& line) {
                                    Work.Ranges.AddRange(line.address, 1, static_cast<int32_t>(i));
                                });
    }
}

void AddCodeSymbol(const SYMINFO& symbol, int32_t module, PointSources& sources) {
    if (symbol.mem_type != MEM_CODE) return;
    Work.Ranges.AddRange(symbol.value, 1, module);
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
    RangeTable& table = Work.Ranges.Table();
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
    Work.Ranges.MergeNeighbours(0, table.Count() - 1);
}

void WriteRanges() {
    RangeTable& table = Work.Ranges.Table();
    Store.Header.ranges_offs = ImageEnd();
    Store.Header.nof_ranges = static_cast<uint32_t>(table.Count());
    for (int32_t i = 0; i < table.Count(); ++i) WriteToImage(&table[i], sizeof(RANGEINFO));
    Work.Ranges = {};
}

}  // namespace

void BuildRangeTable() {
    if (Store.Header.nof_modules == 0) return;
    Trace("Creating module range table\n");
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
