// All run state of the scopes: blocks, symbols, lifetimes, lines, stack adjustments, and the
// numbers of their STF records. A run starts by assigning a new ScopeState.
#pragma once

#include <cstdint>
#include <vector>

#include "reader/primitives.h"
#include "scopes/external_value.h"
#include "scopes/function_map.h"
#include "scopes/function_symbols.h"
#include "scopes/lifetime_fixup.h"
#include "scopes/stack_info.h"
#include "store/name_index.h"
#include "store/records.h"

namespace scan695 {

// Stand in for searches over whole tables; each is extended when it is asked.
struct ScopeIndexes {
    NameIndex GlobalNames;
    NameIndex ModuleNames;
    ExternalWalk Externals;
    FunctionMap Functions;
    FunctionSymbols GlobalFunctions;
    FunctionSymbols ModuleFunctions;
};

struct ScopeState {
    int32_t SymbolCounter = 0;          // number of the next Symbol record
    int32_t RangeCounter = 0;           // of the next Range record
    int32_t SourceCounter = -1;         // of the last Source record
    int32_t SourceDepth = 0;            // open source files of a known module
    int32_t StackAdjust = 0;            // added to the stack offset of every auto that is written
    BLOCKINFO CurrentBlockRecord = {};  // working copy of the open block

    std::vector<OpenLifetime> OpenLifetimes;
    StackCollection StackInfo;
    ScopeIndexes Indexes;
};
extern ScopeState Scopes;

inline void SetStackAdjust(uint32_t value) {
    Scopes.StackAdjust = static_cast<int32_t>(value);
}

// Frees what only the scan needs; can be called twice.
void FreeScopeIndexes();

}  // namespace scan695
