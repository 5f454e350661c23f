#include "scopes/scope_state.h"

namespace scan695 {

ScopeState Scopes;

void StartScopes() {
    Scopes = ScopeState();
}

void FreeWalkIndexes() {
    Scopes.Indexes.Externals = ExternalWalk();
    Scopes.Indexes.Functions = FunctionMap();
    Scopes.Indexes.GlobalFunctions = FunctionSymbols();
    Scopes.Indexes.ModuleFunctions = FunctionSymbols();
}

void FreeScopeIndexes() {
    Scopes.Indexes = ScopeIndexes();
    Scopes.OpenLifetimes = std::vector<OpenLifetime>();
    Scopes.OverlongLifetimes = std::vector<OpenLifetime>();
    Scopes.StackInfo = StackCollection();
}

}  // namespace scan695
