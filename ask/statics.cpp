#include "ask/statics.h"

#include <algorithm>
#include <tuple>

namespace scan695::ask {

bool IsStaticVariable(const SYMINFO& symbol) {
    const bool is_static =
        symbol.storage_class == STORAGE_GLOBAL || symbol.storage_class == STORAGE_STATIC;
    const bool has_bytes = symbol.mem_type >= MEM_CODE && symbol.mem_type < MEM_BIT_LOW;
    return is_static && has_bytes && symbol.size != 0;
}

std::vector<Symbol> StaticVariables(const Fst& fst) {
    std::vector<Symbol> variables;
    ForAllSymbols(fst, [&](const Symbol& symbol) {
        if (IsStaticVariable(symbol.record)) variables.push_back(symbol);
    });
    std::sort(variables.begin(), variables.end(), [](const Symbol& a, const Symbol& b) {
        return std::tie(a.record.value, b.record.size, a.number) <
               std::tie(b.record.value, a.record.size, b.number);
    });
    return variables;
}

}  // namespace scan695::ask
