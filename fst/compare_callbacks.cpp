#include "fst/compare_callbacks.h"

#include "base/text_case.h"
#include "fst/working_arrays.h"
#include "store/tables.h"

namespace scan695 {

namespace {

template <class Key>
int Compare(Key a, Key b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

// At the end of the image fewer bytes stand, which is enough for a name with its NUL.
const char* NameAt(uint32_t record, uint8_t* buffer) {
    return reinterpret_cast<const char*>(
        Store.FstImage.View(Work.NameWork[record], NAME_SIZE, buffer));
}

}  // namespace

int CompareTypes(uint32_t a, uint32_t b) {
    return Compare(Work.TypeKeys[a], Work.TypeKeys[b]);
}

int CompareBlocks(uint32_t a, uint32_t b) {
    const BlockEntry& x = Work.BlockKeys[a];
    const BlockEntry& y = Work.BlockKeys[b];
    if (x.address != y.address) return Compare(x.address, y.address);
    if (x.size != y.size) return Compare(y.size, x.size);
    return Compare(x.parent, y.parent);
}

int CompareSymbolAddresses(uint32_t a, uint32_t b) {
    const SymbolEntry& x = Work.SymbolKeys[a];
    const SymbolEntry& y = Work.SymbolKeys[b];
    if (x.mem_type != y.mem_type) return Compare(x.mem_type, y.mem_type);
    return Compare(x.value, y.value);
}

int CompareNames(uint32_t a, uint32_t b) {
    uint8_t x[NAME_SIZE];
    uint8_t y[NAME_SIZE];
    return CompareNoCase(NameAt(a, x), NameAt(b, y), NAME_SIZE);
}

int CompareLineAddresses(uint32_t a, uint32_t b) {
    const LINEINFO& x = Work.LineWork[a];
    const LINEINFO& y = Work.LineWork[b];
    if (x.address != y.address) return Compare(x.address, y.address);
    return Compare(x.number, y.number);
}

int CompareLineNumbers(uint32_t a, uint32_t b) {
    const LINEINFO& x = Work.LineWork[a];
    const LINEINFO& y = Work.LineWork[b];
    if (x.number != y.number) return Compare(x.number, y.number);
    return Compare(x.address, y.address);
}

int CompareCode(uint32_t a, uint32_t b) {
    const CODEINFO& x = Work.CodeWork[a].record;
    const CODEINFO& y = Work.CodeWork[b].record;
    const auto x_mem_type = static_cast<int8_t>(x.mem_type);
    const auto y_mem_type = static_cast<int8_t>(y.mem_type);
    if (x_mem_type != y_mem_type) return Compare(x_mem_type, y_mem_type);
    return Compare(x.address, y.address);
}

}  // namespace scan695
