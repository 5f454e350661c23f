// The working arrays of the post-processing: copies of records in memory while they are sorted, and
// the array of record numbers that the sorts move. Each exists only while it is needed, is null
// before and behind that, and is loaded, written and freed through the operations below. Entries
// are cleared when they are allocated. Every failure here ends the run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "fst/range_table.h"
#include "store/chunk_file.h"
#include "store/records.h"

namespace scan695 {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
template <class Entry>
using WorkArray = std::unique_ptr<Entry[], FreeMemory>;

struct BlockEntry {
    BLOCKINFO record;
    uint32_t visible_symbols;  // of the block and all its parents
};

inline constexpr uint32_t NAME_SIZE = MAX_NAME_LENGTH + 1;

// What the symbol indexes are sorted by.
struct SymbolEntry {
    uint32_t name_offs;
    uint32_t value;
    int8_t mem_type;
};

struct CodeEntry {
    CODEINFO record;
    int32_t body;  // position of the bytes in the MergedCodeFile
};

// Gives a negative number, 0 or a positive number for two record numbers, which count from the
// start of the working array whatever the first record of the scope.
using CompareFunction = int (*)(uint32_t a, uint32_t b);

struct WorkState {
    WorkArray<uint32_t> SortIndex;      // record numbers being sorted
    WorkArray<TYPEINFO> TypeWork;       // all types
    WorkArray<MODULEINFO> ModuleWork;   // all modules, PrepareModules to SortModules
    WorkArray<BlockEntry> BlockWork;    // all blocks, during SortBlocks
    WorkArray<SYMINFO> SymbolWork;      // some symbols of one scope, to be completed
    WorkArray<SymbolEntry> SymbolKeys;  // the symbols of one scope, to be sorted
    WorkArray<LINEINFO> LineWork;       // the lines of one module, or all lines
    WorkArray<uint32_t> NameWork;       // image offsets of the names of the records being sorted
    WorkArray<CodeEntry> CodeWork;      // all merged code blocks
    WorkArray<uint64_t> FilterWork;     // hash table of the kept global symbols
    WorkArray<uint32_t> FoundTypes;     // record numbers of types that symbols have asked for
    RangeTable Ranges;                  // stretches of code memory and their modules
    CompareFunction CompareCallback = nullptr;
};
extern WorkState Work;

// Frees whatever exists and closes the image cache: called by every report, and at the start of a
// run for a fresh state.
void FreePostProcessWork();

// `count` cleared entries. `operation` is named in the trace of a failure; null for none.
void* AllocateEntries(const char* operation, uint32_t count, size_t entry_size);

// What the load operations share: `count` records of a table from record `first` on, each at the
// beginning of its entry. Bytes behind the end of the table count as zero.
void LoadRecords(ChunkFile& table, void* entries, size_t entry_size, uint32_t record_size,
                 uint32_t first, uint32_t count);

template <class Entry>
void init_table16(ChunkFile& table, WorkArray<Entry>& work, uint32_t record_size, uint32_t first,
                  uint32_t count) {
    work.reset(static_cast<Entry*>(AllocateEntries("init_table16", count, sizeof(Entry))));
    LoadRecords(table, work.get(), sizeof(Entry), record_size, first, count);
}

template <class Entry>
void init_table32(ChunkFile& table, WorkArray<Entry>& work, uint32_t record_size, uint32_t first,
                  uint32_t count) {
    work.reset(static_cast<Entry*>(AllocateEntries("init_table32", count, sizeof(Entry))));
    LoadRecords(table, work.get(), sizeof(Entry), record_size, first, count);
}

// Loads the keys of SYMINFO records of the finished section of the image into SymbolKeys.
void init_symbols(uint32_t first, uint32_t count);

// Fills NameWork for records whose first field is the offset of their name.
void init_names(const void* entries, size_t entry_size, uint32_t count);

// Fills SortIndex with 0 to count - 1.
void init_idx(uint32_t count);

// Fills SortIndex with 0 to count - 1 and sorts it.
void SortRecords(CompareFunction compare, uint32_t count);

// Append to the image: SortIndex, each number plus the base, which frees it, and records from the
// beginning of their entries.
void WriteIndex(uint32_t base, uint32_t count);
void WriteTable(const void* entries, size_t entry_size, uint32_t record_size, uint32_t count);

// The end of the image, where the next section begins; moves the image there.
uint32_t SeekImageEnd();
// Moves the image to an offset.
void SeekImage(uint64_t offset);
// Reads from the image at its position; bytes behind its end count as zero.
void ReadFromImage(void* buffer, uint32_t size);
void WriteToImage(const void* bytes, uint32_t size);

}  // namespace scan695
