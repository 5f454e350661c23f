#include "fst/filter.h"

#include <bit>
#include <cstring>

#include "fst/working_arrays.h"
#include "report/report.h"
#include "store/tables.h"

namespace scan695 {

namespace {

// What two repeats have in common.
struct SymbolKey {
    uint32_t value;
    uint32_t type_index;
    int8_t mem_type;
    char name[NAME_SIZE];  // zeros behind the text

    friend bool operator==(const SymbolKey&, const SymbolKey&) = default;
};

SymbolKey ReadKey(const SYMINFO& symbol) {
    SymbolKey key = {symbol.value, symbol.type_index, symbol.mem_type, {}};
    ChunkFile& image = Store.FstImage;
    image.Seek(symbol.name_offs, ChunkFile::FROM_START);
    image.Read(key.name, NAME_SIZE);
    const size_t length = strnlen(key.name, NAME_SIZE);
    std::memset(key.name + length, 0, NAME_SIZE - length);
    return key;
}

uint32_t HashKey(const SymbolKey& key) {
    uint64_t hash = key.value * 0x9E3779B97F4A7C15 + key.type_index;
    hash = std::rotl(hash, 29) * 0xBF58476D1CE4E5B9 + static_cast<uint8_t>(key.mem_type);
    for (uint32_t i = 0; i < NAME_SIZE; i += sizeof(uint64_t)) {
        uint64_t word;
        std::memcpy(&word, key.name + i, sizeof word);
        hash = (std::rotl(hash, 29) ^ word) * 0x9E3779B97F4A7C15;
    }
    return static_cast<uint32_t>(hash >> 32);
}

// The kept records by their key: slots with the hash above and the record number + 1 below, 0 for
// an empty one; the next slots are tried where one is taken.
class KeptSymbols {
  public:
    explicit KeptSymbols(uint32_t count) : mask_(std::bit_ceil(count + count / 2) - 1) {
        Work.FilterWork.reset(
            static_cast<uint64_t*>(AllocateEntries(nullptr, mask_ + 1, sizeof(uint64_t))));
        slots_ = Work.FilterWork.get();
    }
    ~KeptSymbols() { Work.FilterWork.reset(); }

    // False when a kept record is a repeat; otherwise `number` is kept too.
    bool Keep(const SymbolKey& key, uint32_t number) {
        const uint32_t hash = HashKey(key);
        uint32_t slot = hash & mask_;
        for (; slots_[slot] != 0; slot = (slot + 1) & mask_)
            if (slots_[slot] >> 32 == hash && KeyOf(slots_[slot]) == key) return false;
        slots_[slot] = uint64_t{hash} << 32 | (number + 1);
        return true;
    }

  private:
    static SymbolKey KeyOf(uint64_t slot) {
        SYMINFO symbol = {};
        ReadRecord(Store.GlobalSymbolTable, static_cast<uint32_t>(slot) - 1, symbol);
        return ReadKey(symbol);
    }

    uint32_t mask_;
    uint64_t* slots_ = nullptr;
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
