#include "types/type_state.h"

namespace scan695 {

TypeState Types;

void StartTypes() {
    Types = TypeState();
}

void BeginTypeBlock() {
    Types.Map.BeginBlock();
    Types.Aliases.Clear();
    Types.References.DeactivateAll();
}

}  // namespace scan695
