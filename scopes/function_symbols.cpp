#include "scopes/function_symbols.h"

namespace scan695 {

std::optional<uint32_t> FunctionSymbols::Find(uint32_t address) {
    numbers_.ReserveMore(waiting_.Count());
    waiting_.TakeAll(
        [this](const Function& function) { numbers_.AddNew(function.address, function.number); });
    return numbers_.Find(address);
}

}  // namespace scan695
