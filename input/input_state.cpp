#include "input/input_state.h"

namespace scan695 {

InputState Input;

void StartInput() {
    Input = InputState();
}

}  // namespace scan695
