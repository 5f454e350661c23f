#include <tuple>

#include "inspector/checks.h"

namespace scan695::inspector {

namespace {

// Gives true when `earlier` may stand in front of `later`.
template <class Record>
using InOrder = bool (*)(const Fst& fst, const Record& earlier, const Record& later);

bool TypesInOrder(const Fst&, const TYPEINFO& a, const TYPEINFO& b) {
    return a.here_type_index < b.here_type_index;  // no index is given twice
}

bool BlocksInOrder(const Fst&, const BLOCKINFO& a, const BLOCKINFO& b) {
    // The larger of two blocks at one address comes first.
    return std::tie(a.address, b.size, a.parent) <= std::tie(b.address, a.size, b.parent);
}

bool SymbolAddressesInOrder(const Fst&, const SYMINFO& a, const SYMINFO& b) {
    return std::tie(a.mem_type, a.value) <= std::tie(b.mem_type, b.value);
}

bool LineAddressesInOrder(const Fst&, const LINEINFO& a, const LINEINFO& b) {
    return std::tie(a.address, a.number) <= std::tie(b.address, b.number);
}

bool LineNumbersInOrder(const Fst&, const LINEINFO& a, const LINEINFO& b) {
    return std::tie(a.number, a.address) <= std::tie(b.number, b.address);
}

unsigned char Lower(char c) {
    return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

template <class Record>
bool NamesInOrder(const Fst& fst, const Record& a, const Record& b) {
    const auto left = NameAt(fst, a.name_offs);
    const auto right = NameAt(fst, b.name_offs);
    if (!left || !right) return true;  // reported with the record
    for (size_t i = 0; i < left->size() && i < right->size(); ++i) {
        const unsigned char x = Lower((*left)[i]);
        const unsigned char y = Lower((*right)[i]);
        if (x != y) return x < y;
    }
    return left->size() <= right->size();
}

// Gives false if the entries of the slice are not its records, each one once.
bool CheckEntries(const Fst& fst, SectionId index, const Slice& slice, Findings& findings) {
    std::vector<bool> is_listed(slice.count);
    bool is_good = true;
    for (uint64_t i = slice.entry; i < slice.entry + slice.count; ++i) {
        const uint32_t number = *ReadEntry<uint32_t>(fst, index, i);
        const uint32_t place = number - slice.first;
        if (place >= slice.count) {
            findings.Add("%s: entry %llu names record %u, which is not of its slice",
                         fst.sections[index].name, Wide(i), number);
            is_good = false;
        } else if (is_listed[place]) {
            findings.Add("%s: entry %llu names record %u a second time", fst.sections[index].name,
                         Wide(i), number);
            is_good = false;
        } else {
            is_listed[place] = true;
        }
    }
    return is_good;
}

template <class Record>
void CheckIndex(const Fst& fst, SectionId index, SectionId table, const std::vector<Slice>& slices,
                InOrder<Record> in_order, Findings& findings) {
    for (const Slice& slice : slices) {
        if (slice.entry + slice.count > UsableEntries(fst, index)) return;
        if (!CheckEntries(fst, index, slice, findings)) continue;
        // Records behind the end of a symbol table that lacks some cannot be compared.
        if (uint64_t{slice.first} + slice.count > UsableEntries(fst, table)) continue;
        std::optional<Record> earlier;
        for (uint64_t i = slice.entry; i < slice.entry + slice.count; ++i) {
            const auto later = ReadEntry<Record>(fst, table, *ReadEntry<uint32_t>(fst, index, i));
            if (earlier && !in_order(fst, *earlier, *later)) {
                findings.Add("%s: entries %llu and %llu are out of order", fst.sections[index].name,
                             Wide(i - 1), Wide(i));
            }
            earlier = later;
        }
    }
}

std::vector<Slice> Whole(uint32_t count) {
    return {{0, 0, count, -1, -1}};
}

}  // namespace

void CheckIndexes(const Fst& fst, Findings& findings) {
    const FstHeader& header = fst.header;
    CheckIndex<TYPEINFO>(fst, TYPE_INDEX, TYPES, Whole(header.nof_types), TypesInOrder, findings);
    CheckIndex<BLOCKINFO>(fst, BLOCK_ADDR_INDEX, BLOCKS, Whole(header.nof_blocks), BlocksInOrder,
                          findings);
    const std::vector<Slice> symbols = SymbolSlices(fst);
    CheckIndex<SYMINFO>(fst, SYMBOL_ADDR_INDEX, SYMBOLS, symbols, SymbolAddressesInOrder, findings);
    CheckIndex<SYMINFO>(fst, SYMBOL_NAME_INDEX, SYMBOLS, symbols, NamesInOrder<SYMINFO>, findings);
    const std::vector<Slice> lines = LineSlices(fst);
    CheckIndex<LINEINFO>(fst, LINE_ADDR_INDEX, LINES, lines, LineAddressesInOrder, findings);
    CheckIndex<LINEINFO>(fst, LINE_NUMBER_INDEX, LINES, lines, LineNumbersInOrder, findings);
    CheckIndex<LINEINFO>(fst, GLOBAL_LINE_INDEX, LINES, Whole(header.nof_lines),
                         LineAddressesInOrder, findings);
    CheckIndex<MODULEINFO>(fst, MODULE_NAME_INDEX, MODULES, Whole(header.nof_modules),
                           NamesInOrder<MODULEINFO>, findings);
}

}  // namespace scan695::inspector
