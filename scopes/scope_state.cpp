#include "scopes/scope_state.h"

namespace scan695 {

ScopeState Scopes;

void StartScopes() {
    Scopes = ScopeState();
}

void FreeScopeIndexes() {
    Scopes.Indexes = ScopeIndexes();
    Scopes.OpenLifetimes = {};
    Scopes.OverlongLifetimes = {};
    Scopes.StackInfo = StackCollection();
}

}  // namespace scan695
