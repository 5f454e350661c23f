#include <algorithm>

#include "inspector/checks.h"
#include "inspector/names.h"

namespace scan695::inspector {

namespace {

bool IsMemory(int mem_type) {
    return (mem_type >= MEM_CODE && mem_type <= MEM_UNKNOWN) || mem_type == MEM_REGISTER;
}

bool IsIndexBelow(int32_t number, uint32_t count) {
    return number >= -1 && int64_t{number} < int64_t{count};
}

void CheckLocation(uint64_t number, const LOCINFO& location, Findings& findings) {
    bool is_good = location.fill == 0;
    if (location.exec_mem_type == 0) {  // of a variable
        const bool is_register = location.storage_class == STORAGE_REGISTER;
        is_good = is_good && location.storage_class >= STORAGE_STATIC &&
                  location.storage_class <= STORAGE_REGISTER &&
                  location.mem_type == (is_register ? MEM_REGISTER : MEM_DATA);
    } else {  // a stack adjustment of a function
        is_good = is_good && location.exec_mem_type == 1 && location.storage_class == 0 &&
                  location.mem_type == 0;
    }
    if (!is_good) findings.Add("symbol %llu: impossible location", Wide(number));
}

void CheckLocations(const Fst& fst, uint64_t number, const SYMINFO& symbol, CheckedLists& lists,
                    Findings& findings) {
    const bool has_locations = (symbol.access_mode & ACCESS_HAS_LOCATIONS) != 0;
    if ((symbol.access_mode & ~ACCESS_HAS_LOCATIONS) != 0) {
        findings.Add("symbol %llu: access mode is 0x%x", Wide(number), symbol.access_mode);
    }
    if (!has_locations && symbol.nof_locs != 0) {
        findings.Add("symbol %llu: %u locations without their flag", Wide(number), symbol.nof_locs);
    }
    const ListPlace list = {symbol.locinfo_offs, StoredElements(symbol.nof_locs)};
    if (list.count == 0) {
        if (symbol.locinfo_offs != 0) {
            findings.Add("symbol %llu: location list without elements", Wide(number));
        }
        return;
    }
    if (!CheckList(fst, list, 0, "symbol", number, lists, findings)) return;
    for (uint32_t i = 0; i < list.count; ++i) {
        LOCINFO location;
        if (!ReadAt(fst, list.offset + uint64_t{i} * sizeof location, location)) return;
        CheckLocation(number, location, findings);
    }
}

// The size of an object of the type, as symbols state it: functions and enumerations have none.
uint32_t SizeOf(const TYPEINFO& type) {
    switch (type.type_tag) {
        case TAG_POINTER:
            return type.u.pointer.ptr_size;
        case TAG_ARRAY:
            return type.u.array.size;
        case TAG_STRUCT:
        case TAG_UNION:
            return type.u.structunion.size;
        case TAG_NONE:
        case TAG_BITFIELD:
        case TAG_FUNCTION:
        case TAG_ATTRIBUTE:
        case TAG_ENUMERATION:
            break;
    }
    return 0;
}

// Nothing where the file does not tell.
std::optional<uint32_t> SizeOfBasicType(const Fst& fst, uint32_t index) {
    if (index == TYPE_POINTER) return {};
    if (index >= BASIC_SIZES_COUNT) return 0;
    const auto size = ReadEntry<uint8_t>(fst, BASIC_SIZES, index);
    return size ? std::optional<uint32_t>(*size) : std::nullopt;
}

// The size follows from the type, which has lost its attributes. Types are looked up by the low 16
// bits of the index.
void CheckSize(const Fst& fst, uint64_t number, const SYMINFO& symbol, Findings& findings) {
    const uint32_t index = symbol.type_index;
    std::optional<uint32_t> size;
    if (index < FIRST_TYPE_INDEX) {
        if (!IsBasicType(index) || index == TYPE_LABEL) {
            findings.Add("symbol %llu: no basic type %u", Wide(number), index);
            return;
        }
        size = SizeOfBasicType(fst, index);
    } else {
        const auto found = FindType(fst, index & 0xFFFF);
        if (!found || found->type.type_tag == TAG_ATTRIBUTE) {
            findings.Add("symbol %llu: type %u %s", Wide(number), index,
                         found ? "is an attribute" : "has no record");
            return;
        }
        size = SizeOf(found->type);
    }
    if (size && symbol.size != *size) {
        findings.Add("symbol %llu: size is %u, its type has %u", Wide(number), symbol.size, *size);
    }
}

// A symbol with a module and a block stands among the block symbols, another static one with a
// module among the module symbols, any other among the global ones.
void CheckPlace(const FstHeader& header, uint64_t number, const SYMINFO& symbol,
                Findings& findings) {
    const bool has_module = symbol.module != -1;
    uint64_t first = 0;
    uint64_t count = header.nof_global_symbols;
    if (has_module && symbol.block != -1) {
        first = count + header.nof_module_symbols;
        count = header.nof_block_symbols;
    } else if (has_module && symbol.storage_class == STORAGE_STATIC) {
        first = count;
        count = header.nof_module_symbols;
    }
    if (number < first || number - first >= count) {
        findings.Add("symbol %llu: in the wrong part of the table", Wide(number));
    }
}

void CheckSymbol(const Fst& fst, uint64_t number, const SYMINFO& symbol, CheckedLists& lists,
                 Findings& findings) {
    if (!IsIndexBelow(symbol.module, fst.header.nof_modules)) {
        findings.Add("symbol %llu: no module %d", Wide(number), symbol.module);
    }
    if (!IsIndexBelow(symbol.block, fst.header.nof_blocks)) {
        findings.Add("symbol %llu: no block %d", Wide(number), symbol.block);
    }
    if (symbol.storage_class > STORAGE_REGISTER || !IsMemory(symbol.mem_type)) {
        findings.Add("symbol %llu: storage class %u in memory %d", Wide(number),
                     symbol.storage_class, symbol.mem_type);
    }
    if (symbol.reserved != 0) {
        findings.Add("symbol %llu: reserved bytes are not zero", Wide(number));
    }
    CheckLocations(fst, number, symbol, lists, findings);
    CheckSize(fst, number, symbol, findings);
    if (HasAllSymbols(fst)) CheckPlace(fst.header, number, symbol, findings);
}

}  // namespace

void CheckSymbols(const Fst& fst, Findings& findings) {
    const Section& section = fst.sections[SYMBOLS];
    const uint64_t expected = fst.header.nof_all_symbols;
    if (section.entries > expected || (expected - section.entries) % 0x10000 != 0) {
        findings.Add("header: %llu symbols, but %llu in the scopes", Wide(expected),
                     Wide(section.entries));
    }
    int longest_name = 0;
    CheckedLists lists = {LocationLists(fst)};
    const uint64_t usable = UsableEntries(fst, SYMBOLS);
    for (uint64_t i = 0; i < usable; ++i) {
        const auto symbol = *ReadEntry<SYMINFO>(fst, SYMBOLS, i);
        longest_name =
            std::max(longest_name, CheckName(fst, symbol.name_offs, "symbol", i, findings));
        CheckSymbol(fst, i, symbol, lists, findings);
    }
    const int stated = fst.header.max_symbol_name;
    const bool is_complete = HasAllSymbols(fst) && usable == expected;
    if (is_complete ? stated != longest_name : stated < longest_name) {
        findings.Add("header: max_symbol_name is %d, the longest name has %d characters", stated,
                     longest_name);
    }
}

}  // namespace scan695::inspector
