// The working arrays of the post-processing: copies of records in memory while they are sorted, and
// the array of record numbers that the sorts move. Each exists only while it is needed, is empty
// before and behind that, and is loaded and written through the operations below. Entries are
// cleared when they are allocated. Every failure here ends the run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <vector>

#include "fst/image_access.h"
#include "fst/quick_sort.h"
#include "fst/range_map.h"
#include "fst/symbol_size.h"
#include "report/report.h"
#include "store/chunk_file.h"
#include "store/records.h"

namespace scan695 {

inline constexpr uint32_t NAME_SIZE = MAX_NAME_LENGTH + 1;

// What the block index and the symbol indexes are sorted by.
struct BlockEntry {
    uint32_t address;
    uint32_t size;
    int32_t parent;
};
struct SymbolEntry {
    uint32_t name_offs;
    uint32_t value;
    int8_t mem_type;
};

struct MergedBlock {
    CODEINFO record;
    uint32_t body;  // position of the bytes in the MergedCodeFile
};

struct WorkState {
    std::vector<uint32_t> SortIndex;      // record numbers being sorted
    std::vector<uint32_t> TypeKeys;       // type indexes of all types, to be sorted
    std::vector<MODULEINFO> ModuleWork;   // all modules, PrepareModules to SortModules
    std::vector<BlockEntry> BlockKeys;    // all blocks, to be sorted
    std::vector<uint32_t> BlockSymbols;   // by block: those visible in it, its own and its parents'
    std::vector<SYMINFO> SymbolWork;      // some symbols of one scope, to be completed
    std::vector<SymbolEntry> SymbolKeys;  // the symbols of one scope, to be sorted
    std::vector<LINEINFO> LineWork;       // all lines, during SortLines
    std::vector<uint32_t> NameWork;       // image offsets of the names of the records being sorted
    std::vector<MergedBlock> CodeWork;    // all merged code blocks
    TypeEnds SymbolTypes;                 // what symbols have asked for, during SortSymbols
    RangeMap Ranges;                      // stretches of code memory and their modules
};
extern WorkState Work;

// Frees whatever exists: called by every report, and at the start of a run for a fresh state.
void FreePostProcessWork();

// Ends the run for want of memory: `operation` with its count is named in the trace before.
[[noreturn]] void StopAllocation(const char* operation, uint32_t count);

// Makes an array of `count` cleared entries. `operation` may be null for none.
template <class Entry>
void AllocateEntries(std::vector<Entry>& work, const char* operation, uint32_t count) {
    try {
        work = std::vector<Entry>(count);
    } catch (const std::exception&) {  // no memory, or more than an array can have
        StopAllocation(operation, count);
    }
}

// Gives the memory back, which clearing alone does not.
template <class Entry>
void FreeEntries(std::vector<Entry>& work) {
    work = std::vector<Entry>();
}

// What the load operations share: `count` records of a table from record `first` on, each at the
// beginning of its entry. Bytes behind the end of the table count as zero.
void LoadRecords(const ChunkFile& table, void* entries, size_t entry_size, uint32_t record_size,
                 uint32_t first, uint32_t count);

template <class Entry>
void init_table16(const ChunkFile& table, std::vector<Entry>& work, uint32_t record_size,
                  uint32_t first, uint32_t count) {
    AllocateEntries(work, "init_table16", count);
    LoadRecords(table, work.data(), sizeof(Entry), record_size, first, count);
}

template <class Entry>
void init_table32(const ChunkFile& table, std::vector<Entry>& work, uint32_t record_size,
                  uint32_t first, uint32_t count) {
    AllocateEntries(work, "init_table32", count);
    LoadRecords(table, work.data(), sizeof(Entry), record_size, first, count);
}

// Moves `count` records of a table into the image, each as complete(number, record) leaves it. The
// table gives its memory up as it goes; the record behind can still be read.
template <class Record, class Complete>
void MoveTable(ChunkFile& table, uint32_t count, const Complete& complete) {
    for (uint32_t number = 0; number < count; ++number) {
        ProgressTick();
        Record record = {};
        ReadRecord(table, number, record);
        complete(number, record);
        WriteToImage(&record, sizeof record);
        table.FreeInFrontOf((number + 1) * uint32_t{sizeof record});
    }
    table.Free();
}

// Loads the keys of SYMINFO records of the finished section of the image into SymbolKeys.
void init_symbols(uint32_t first, uint32_t count);

// Fills NameWork for records whose first field is the offset of their name.
void init_names(const void* entries, size_t entry_size, uint32_t count);

// Fills SortIndex with the `count` numbers from `first` on, and sorts it.
void SortRecords(CompareFunction compare, uint32_t first, uint32_t count);

// Append to the image: SortIndex, each number plus the base, and records from the beginning of
// their entries. SortIndex is freed.
void WriteIndex(uint32_t base);
void WriteTable(const void* entries, size_t entry_size, uint32_t record_size, uint32_t count);

}  // namespace scan695
