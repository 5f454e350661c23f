#include "types/type_state.h"

namespace scan695 {

TypeState Types;

void FreeTypeMaps() {
    Types = TypeState();
}

}  // namespace scan695
