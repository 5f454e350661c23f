#include "ask/places.h"

#include <algorithm>
#include <tuple>

#include "inspector/lookup.h"

namespace scan695::ask {

using inspector::LowerBound;
using inspector::ReadEntry;
using inspector::UsableEntries;

namespace {

constexpr uint64_t FEW = 64;  // blocks behind which a search gives up stepping back
constexpr size_t MAX_NESTING = 1000;
constexpr uint64_t MAX_TWINS = 1000;  // labels at one address that are compared

bool Holds(uint32_t begin, uint32_t size, uint32_t address) {
    return address >= begin && address - begin < size;
}

std::optional<Block> ReadBlock(const Fst& fst, int64_t number) {
    if (number < 0) return {};
    const auto record = ReadEntry<BLOCKINFO>(fst, inspector::BLOCKS, static_cast<uint64_t>(number));
    if (!record) return {};
    return Block{static_cast<uint32_t>(number), *record};
}

// The block by its place in the block address index.
std::optional<Block> SortedBlock(const Fst& fst, uint64_t place) {
    const auto number = ReadEntry<uint32_t>(fst, inspector::BLOCK_ADDR_INDEX, place);
    return number ? ReadBlock(fst, *number) : std::nullopt;
}

// Whether a location holds at an address. Its end is the first address behind it, but the end of
// the block, where the input left it open: that is the last address.
bool HoldsAt(const LOCINFO& location, uint32_t address, const BLOCKINFO& block) {
    if (address < location.beg_address) return false;
    if (address < location.end_address || location.end_address == OPEN_END) return true;
    return address == location.end_address && address == block.address + block.size - 1;
}

}  // namespace

std::optional<size_t> Places::CodeAt(uint32_t address) {
    if (!code_) {
        code_.emplace();
        for (size_t i = 0; i < fst_.code.size(); ++i)
            code_->emplace_back(fst_.code[i].head.address, i);
        std::sort(code_->begin(), code_->end());
        std::vector<uint64_t> ends;
        for (const auto& [begin, number] : *code_)
            ends.push_back(uint64_t{begin} + fst_.code[number].head.length);
        code_cover_.emplace(ends);
    }
    const auto behind =
        std::upper_bound(code_->begin(), code_->end(), std::pair(address, SIZE_MAX));
    const size_t at = code_cover_->Last(static_cast<size_t>(behind - code_->begin()), address);
    if (at == CoverIndex::NONE) return {};
    return (*code_)[at].second;
}

std::optional<RANGEINFO> Places::RangeAt(uint32_t address) {
    const uint64_t count = UsableEntries(fst_, inspector::RANGES);
    const auto range_at = [&](uint64_t i) {
        return *ReadEntry<RANGEINFO>(fst_, inspector::RANGES, i);
    };
    uint64_t low = 0;
    for (uint64_t high = count; low < high;) {
        const uint64_t middle = low + (high - low) / 2;
        if (range_at(middle).address <= address) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    for (uint64_t i = low; i > 0 && low - i < FEW; --i) {
        const RANGEINFO range = range_at(i - 1);
        if (Holds(range.address, range.length, address)) return range;
        if (range.length != 0) break;  // else what is left of a stretch that others overruled
    }
    // A program that reaches the end of the address space has its ranges in no order.
    if (!ranges_are_sorted_) {
        ranges_are_sorted_ = true;
        for (uint64_t i = 1; i < count && *ranges_are_sorted_; ++i)
            ranges_are_sorted_ = range_at(i - 1).address <= range_at(i).address;
    }
    if (*ranges_are_sorted_) return {};
    for (uint64_t i = count; i > 0; --i) {
        const RANGEINFO range = range_at(i - 1);
        if (Holds(range.address, range.length, address)) return range;
    }
    return {};
}

std::vector<Block> Places::BlocksAt(uint32_t address) {
    const size_t count = UsableEntries(fst_, inspector::BLOCK_ADDR_INDEX);
    const uint64_t behind =
        LowerBound(fst_, inspector::BLOCK_ADDR_INDEX, 0, count, [&](uint32_t number) {
            const auto block = ReadBlock(fst_, number);
            return block && block->record.address <= address;
        });
    std::optional<Block> found;
    for (uint64_t i = behind; i > 0 && behind - i < FEW && !found; --i) {
        found = SortedBlock(fst_, i - 1);
        if (found && !Holds(found->record.address, found->record.size, address)) found.reset();
    }
    if (!found && behind > FEW) {
        if (!block_cover_) {
            std::vector<uint64_t> ends(count);
            for (size_t i = 0; i < count; ++i) {
                const auto block = SortedBlock(fst_, i);
                if (block) ends[i] = uint64_t{block->record.address} + block->record.size;
            }
            block_cover_.emplace(ends);
        }
        const size_t place = block_cover_->Last(static_cast<size_t>(behind), address);
        if (place != CoverIndex::NONE) found = SortedBlock(fst_, place);
    }
    std::vector<Block> blocks;
    while (found && blocks.size() < MAX_NESTING) {
        blocks.push_back(*found);
        const int64_t outer = found->record.parent;
        found = outer < found->number ? ReadBlock(fst_, outer) : std::nullopt;
    }
    return blocks;
}

std::optional<Block> Places::FunctionOf(int32_t block) const {
    auto found = ReadBlock(fst_, block);
    for (size_t depth = 0; found && found->record.is_function == 0; ++depth) {
        const int64_t outer = found->record.parent;
        if (depth == MAX_NESTING || outer >= found->number) return {};
        found = ReadBlock(fst_, outer);
    }
    return found;
}

std::optional<Block> Places::BlockOf(const Symbol& function) {
    const uint32_t address = function.record.value;
    if (function.record.mem_type != MEM_CODE) return {};
    for (const Block& block : BlocksAt(address)) {
        if (block.record.address == address &&
            inspector::FunctionSymbol(fst_, block.record) == function.number)
            return block;
    }
    return {};
}

std::optional<Line> Places::LineAt(uint32_t address, int64_t module) const {
    const uint64_t count = UsableEntries(fst_, inspector::GLOBAL_LINE_INDEX);
    const uint64_t behind =
        LowerBound(fst_, inspector::GLOBAL_LINE_INDEX, 0, count, [&](uint32_t number) {
            const auto line = ReadEntry<LINEINFO>(fst_, inspector::LINES, number);
            return line && line->address <= address;
        });
    if (behind == 0) return {};
    const auto number = ReadEntry<uint32_t>(fst_, inspector::GLOBAL_LINE_INDEX, behind - 1);
    const auto line = number ? ReadEntry<LINEINFO>(fst_, inspector::LINES, *number) : std::nullopt;
    if (!line || line->module != module) return {};
    return Line{*number, *line};
}

std::optional<Symbol> Places::VariableAt(uint32_t address) {
    if (!variables_) {
        variables_ = StaticVariables(fst_);
        std::vector<uint64_t> ends;
        for (const Symbol& variable : *variables_)
            ends.push_back(uint64_t{variable.record.value} + variable.record.size);
        variable_cover_.emplace(ends);
    }
    const auto behind = std::upper_bound(
        variables_->begin(), variables_->end(), address,
        [](uint32_t wanted, const Symbol& symbol) { return wanted < symbol.record.value; });
    const size_t at =
        variable_cover_->Last(static_cast<size_t>(behind - variables_->begin()), address);
    if (at == CoverIndex::NONE) return {};
    return (*variables_)[at];
}

// The symbol nearest below the address that the range's module or nobody owns.
std::optional<Symbol> Places::LabelAt(uint32_t address, const RANGEINFO& range) const {
    std::optional<Symbol> nearest;
    const auto consider = [&](const inspector::Slice& slice, int8_t memory) {
        const uint64_t end = slice.entry + slice.count;
        uint64_t at =
            LowerBound(fst_, inspector::SYMBOL_ADDR_INDEX, slice.entry, end, [&](uint32_t number) {
                const auto symbol = ReadEntry<SYMINFO>(fst_, inspector::SYMBOLS, number);
                return symbol &&
                       std::tie(symbol->mem_type, symbol->value) <= std::tie(memory, address);
            });
        const uint64_t last = at > slice.entry + MAX_TWINS ? at - MAX_TWINS : slice.entry;
        for (; at > last; --at) {
            const auto number = ReadEntry<uint32_t>(fst_, inspector::SYMBOL_ADDR_INDEX, at - 1);
            const auto symbol =
                number ? ReadEntry<SYMINFO>(fst_, inspector::SYMBOLS, *number) : std::nullopt;
            if (!symbol || symbol->mem_type != memory || symbol->value < range.address) return;
            if (nearest && symbol->value < nearest->record.value) return;
            const auto owner = static_cast<int64_t>(range.module);
            if (symbol->module != -1 && symbol->module != owner) continue;
            // At one address code comes first, then what was recorded first.
            if (!nearest || symbol->value > nearest->record.value ||
                std::pair(memory, *number) < std::pair(nearest->record.mem_type, nearest->number))
                nearest = Symbol{*number, *symbol};
        }
    };
    for (const int8_t memory : {MEM_CODE, MEM_DATA, MEM_UNKNOWN}) {
        consider(inspector::GlobalSlice(fst_), memory);
        consider(inspector::ModuleSlice(fst_, range.module), memory);
    }
    return nearest;
}

Place Places::At(uint32_t address) {
    Place place;
    place.address = address;
    place.code = CodeAt(address);
    place.range = RangeAt(address);
    place.blocks = BlocksAt(address);
    const auto function =
        std::find_if(place.blocks.begin(), place.blocks.end(),
                     [](const Block& block) { return block.record.is_function != 0; });
    if (function != place.blocks.end()) {
        place.function = *function;
        const auto [known, is_new] = symbols_of_blocks_.try_emplace(function->number);
        if (is_new) known->second = inspector::FunctionSymbol(fst_, function->record);
        if (const auto number = known->second)
            place.function_symbol =
                Symbol{*number, *ReadEntry<SYMINFO>(fst_, inspector::SYMBOLS, *number)};
    } else {
        place.symbol = VariableAt(address);
        if (!place.symbol && place.range) place.symbol = LabelAt(address, *place.range);
    }
    if (place.range) place.line = LineAt(address, place.range->module);
    return place;
}

// The symbols of a function stand together: in the slices of its block and of the blocks that
// follow up to the next one that is nested in nothing. A symbol behind an inner block is in that
// block's slice, so only the symbol itself tells where it belongs.
const std::vector<Symbol>& Places::SymbolsOfFunction(uint32_t number) {
    const bool has_all = inspector::HasAllSymbols(fst_);
    if (!has_all) number = 0;  // one list for all of them
    const auto [place, is_new] = function_symbols_.try_emplace(number);
    std::vector<Symbol>& symbols = place->second;
    if (!is_new) return symbols;
    if (!has_all) {
        ForAllSymbols(fst_, [&](const Symbol& symbol) {
            if (symbol.record.block != -1) symbols.push_back(symbol);
        });
        return symbols;
    }
    for (uint32_t i = number;; ++i) {
        const auto block = ReadBlock(fst_, i);
        if (!block || (i > number && block->record.size != 0 && block->record.parent == -1)) break;
        const inspector::Slice slice = inspector::BlockSlice(fst_, i);
        for (uint32_t k = 0; k < slice.count; ++k) {
            const auto symbol = ReadEntry<SYMINFO>(fst_, inspector::SYMBOLS, slice.entry + k);
            if (symbol) symbols.push_back({slice.first + k, *symbol});
        }
    }
    return symbols;
}

std::vector<LiveVariable> Places::VariablesAt(const Place& place) {
    std::vector<LiveVariable> alive;
    if (place.blocks.empty()) return alive;
    for (const Symbol& symbol : SymbolsOfFunction(place.blocks.back().number)) {
        const auto block =
            std::find_if(place.blocks.begin(), place.blocks.end(), [&](const Block& candidate) {
                return static_cast<int64_t>(candidate.number) == symbol.record.block;
            });
        if (block == place.blocks.end()) continue;
        const uint32_t offset = symbol.record.locinfo_offs;
        const uint32_t count = offset == 0 ? 0 : inspector::StoredElements(symbol.record.nof_locs);
        if (count == 0) alive.push_back({symbol, {}});
        for (uint32_t i = 0; i < count; ++i) {
            LOCINFO location;
            if (!inspector::ReadAt(fst_, offset + uint64_t{i} * sizeof location, location)) break;
            if (!HoldsAt(location, place.address, block->record)) continue;
            alive.push_back({symbol, location});
            break;
        }
    }
    return alive;
}

}  // namespace scan695::ask
