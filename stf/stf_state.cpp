#include "stf/stf_state.h"

namespace scan695 {

StfState Stf;
char StfText[StfState::PAYLOAD + StfState::SPARE];

void StartStf(const char* path) {
    if (Stf.file != nullptr) std::fclose(Stf.file);
    Stf = StfState();
    Stf.FileName = path;
}

}  // namespace scan695
