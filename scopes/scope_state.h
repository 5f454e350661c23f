// All run state of the scopes: where the scan stands, and what it collects of lifetimes, stack
// adjustments and public symbols.
#pragma once

#include <cstdint>
#include <vector>

#include "base/hash_table.h"
#include "input/cursor.h"
#include "scopes/function_map.h"
#include "scopes/function_symbols.h"
#include "store/records.h"
#include "store/stored_names.h"

namespace scan695 {

// A record of the BlockSymbolTable whose last location may be open, so that a block's end need not
// look at all of its symbols. See scopes/lifetime_fixup.
struct OpenLifetime {
    uint32_t symbol;  // record number
    uint32_t place;   // image offset where the last location stands by its count
    bool stored;      // it does stand there: a list above MAX_ITEM_SIZE is cut when it is stored
};

// The ranges of the function that stack adjustments come for at present. See scopes/stack_info.
struct StackCollection {
    int32_t function = -1;         // block index; -1 for none
    std::vector<LOCINFO> entries;  // complete ranges
    LOCINFO open = {};             // the range begun last
    uint32_t points = 0;           // points that have come for the function
};

// How far the external part has been read in search of addresses, and what has been passed. See
// scopes/external_value.
struct ExternalEntry {
    uint32_t name_at;  // offset of the name field in the input
    uint32_t address;
};
struct ExternalWalk {
    enum Ending { NOT_YET, AT_OTHER_BYTE, AT_OPEN_GROUP };

    bool started = false;
    uint32_t cursor = 0;               // where to go on
    char name[SYMBOL_NAME_SIZE] = {};  // of the last group; stays where no name comes
    uint32_t nof_records = 0;
    ChunkFile entries;       // ExternalEntry
    LargeHashTable by_name;  // the first entry of each name
    // For the trace: the segment records, and how many of them stand in front of each entry.
    std::vector<uint32_t> segments;
    std::vector<uint32_t> nof_segments;
    Ending ending = NOT_YET;
    uint8_t end_byte = 0;
};

// Stand in for searches over whole tables. Records are noted as they come and taken in when
// somebody asks.
struct ScopeIndexes {
    NameIndex GlobalNames;
    NameIndex ModuleNames;
    ExternalWalk Externals;
    FunctionMap Functions;
    FunctionSymbols GlobalFunctions;
    FunctionSymbols ModuleFunctions;
};

struct ScopeState {
    int32_t CurrentModule = -1;          // module that records now belong to; -1 before the first
    MODULEINFO module_record = {};       // of the last BB3 or BB10 block; its language counts
    int32_t CurrentBlock = -1;           // number of the open block; -1 outside all blocks
    BLOCKINFO CurrentBlockRecord = {};   // of the open block
    std::vector<BLOCKINFO> OuterBlocks;  // those around it, the outermost first
    uint32_t block_nesting = 0;          // open blocks, for the limit of 1,000
    uint32_t file_nesting = 0;           // open source files, for the same limit

    // Of the source file whose head is being read; not on the stack, since files nest deep.
    char source_path[BLOCK_NAME_SIZE] = {};

    std::vector<OpenLifetime> OpenLifetimes;
    std::vector<OpenLifetime> OverlongLifetimes;  // those of them that are not stored
    StackCollection StackInfo;
    ScopeIndexes Indexes;
};
extern ScopeState Scopes;

// Starts a run.
void StartScopes();

// Frees what only the walk over the debug information needs.
void FreeWalkIndexes();
// Frees what only the scan needs; can be called twice.
void FreeScopeIndexes();

}  // namespace scan695
