// All run state of the scopes: blocks, symbols, lifetimes, lines, stack adjustments. A run starts
// by assigning a new ScopeState.
#pragma once

#include <cstdint>
#include <vector>

#include "input/cursor.h"
#include "scopes/external_value.h"
#include "scopes/function_map.h"
#include "scopes/function_symbols.h"
#include "scopes/lifetime_fixup.h"
#include "scopes/stack_info.h"
#include "store/records.h"
#include "store/stored_names.h"

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
    BLOCKINFO CurrentBlockRecord = {};  // working copy of the open block

    std::vector<OpenLifetime> OpenLifetimes;
    StackCollection StackInfo;
    ScopeIndexes Indexes;
};
extern ScopeState Scopes;

// Frees what only the scan needs; can be called twice.
void FreeScopeIndexes();

}  // namespace scan695
