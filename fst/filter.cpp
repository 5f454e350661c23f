#include "fst/filter.h"

#include <cstring>
#include <exception>
#include <string_view>

#include "base/hash_table.h"
#include "fst/image_access.h"
#include "report/report.h"

namespace scan695 {

namespace {

// What two repeats have in common, without a gap: bytes that are the same or not.
struct SymbolKey {
    uint32_t value;
    uint32_t type_index;
    int32_t mem_type;
    char name[MAX_NAME_LENGTH + 1];  // zeros behind the text

    std::string_view Bytes() const { return {reinterpret_cast<const char*>(this), sizeof *this}; }
};
static_assert(sizeof(SymbolKey) == 44);

SymbolKey ReadKey(const SYMINFO& symbol) {
    SymbolKey key = {symbol.value, symbol.type_index, symbol.mem_type, {}};
    Store.FstImage.ReadAt(symbol.name_offs, key.name, sizeof key.name);
    const size_t length = strnlen(key.name, sizeof key.name);
    std::memset(key.name + length, 0, sizeof key.name - length);
    return key;
}

// The records of the GlobalSymbolTable that stay, by their key. Without memory for the index each
// record is compared with all of them.
class KeptSymbols {
  public:
    explicit KeptSymbols(uint32_t count) {
        try {
            numbers_.ReserveMore(count);
            indexed_ = true;
        } catch (const std::exception&) {
        }
    }

    // False when a kept record is a repeat; otherwise `number` is kept too.
    bool Keep(const SymbolKey& key, uint32_t number) {
        const auto is_repeat = [&key](uint32_t kept) { return KeyOf(kept).Bytes() == key.Bytes(); };
        if (indexed_) return numbers_.AddNew(HashBytes(key.Bytes()), number, is_repeat);
        for (uint32_t kept = 0; kept < number; ++kept)
            if (is_repeat(kept)) return false;
        return true;
    }

  private:
    static SymbolKey KeyOf(uint32_t number) {
        SYMINFO symbol = {};
        ReadRecord(Store.GlobalSymbolTable, number, symbol);
        return ReadKey(symbol);
    }

    HashTable<> numbers_;
    bool indexed_ = false;
};

}  // namespace

void FilterGlobalSymbols() {
    PrintLine("Filtering...           \b\b\b\b\b\b\b\b\b\b");
    Trace("\n");
    FstHeader& header = Store.Header;
    const uint32_t count = header.nof_global_symbols;
    if (count == 0) return;
    KeptSymbols kept_symbols(count);
    uint32_t kept = 0;
    for (uint32_t i = 0; i < count; ++i) {
        SYMINFO symbol = {};
        ReadRecord(Store.GlobalSymbolTable, i, symbol);
        if (kept_symbols.Keep(ReadKey(symbol), kept)) {
            if (kept < i) WriteRecord(Store.GlobalSymbolTable, kept, symbol);
            ++kept;
        }
        ProgressTick();
    }
    header.nof_all_symbols -= count - kept;
    header.nof_global_symbols = kept;
}

}  // namespace scan695
