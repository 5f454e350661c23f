#include "ask/sizes.h"

#include <algorithm>
#include <tuple>

#include "ask/stretches.h"
#include "inspector/reader.h"

namespace scan695::ask {

using inspector::ReadEntry;
using inspector::UsableEntries;

namespace {

// Who owns which addresses.
struct Owners {
    Stretches ranges;     // by module
    Stretches functions;  // by place in the list of functions
    Stretches variables;  // by place in the list of variables
    Stretches image;
};

void AddRanges(const Fst& fst, Sizes& sizes, Owners& owners) {
    std::vector<RANGEINFO> ranges;
    for (uint64_t i = 0; i < UsableEntries(fst, inspector::RANGES); ++i)
        ranges.push_back(*ReadEntry<RANGEINFO>(fst, inspector::RANGES, i));
    std::stable_sort(ranges.begin(), ranges.end(),
                     [](const RANGEINFO& a, const RANGEINFO& b) { return a.address < b.address; });
    for (const RANGEINFO& range : ranges) {
        if (range.module < sizes.modules.size())
            owners.ranges.Add(range.address, uint64_t{range.address} + range.length, range.module);
    }
    for (const Stretch& range : owners.ranges.list()) {
        sizes.modules[range.owner].range += range.end - range.begin;
        sizes.range += range.end - range.begin;
    }
}

void AddFunctions(const Fst& fst, Sizes& sizes, Owners& owners) {
    for (uint64_t i = 0; i < UsableEntries(fst, inspector::BLOCK_ADDR_INDEX); ++i) {
        const uint32_t number = *ReadEntry<uint32_t>(fst, inspector::BLOCK_ADDR_INDEX, i);
        const auto block = ReadEntry<BLOCKINFO>(fst, inspector::BLOCKS, number);
        if (!block || block->is_function == 0) continue;
        FunctionSize& function = sizes.functions.emplace_back();
        function.block = number;
        function.record = *block;
        if (block->module >= 0 && static_cast<size_t>(block->module) < sizes.modules.size())
            ++sizes.modules[static_cast<size_t>(block->module)].functions;
    }
    std::stable_sort(sizes.functions.begin(), sizes.functions.end(),
                     [](const FunctionSize& a, const FunctionSize& b) {
                         return std::tie(a.record.address, b.record.size) <
                                std::tie(b.record.address, a.record.size);
                     });
    for (size_t i = 0; i < sizes.functions.size(); ++i) {
        const BLOCKINFO& block = sizes.functions[i].record;
        owners.functions.Add(block.address, uint64_t{block.address} + block.size, i);
    }
}

void AddLines(const Fst& fst, Sizes& sizes, const Owners& owners) {
    for (uint64_t i = 0; i < UsableEntries(fst, inspector::LINES); ++i) {
        const auto line = *ReadEntry<LINEINFO>(fst, inspector::LINES, i);
        ++sizes.lines;
        const bool has_module =
            line.module >= 0 && static_cast<size_t>(line.module) + 1 < sizes.modules.size();
        ++sizes.modules[has_module ? static_cast<size_t>(line.module) : sizes.modules.size() - 1]
              .lines;
        owners.functions.Split(line.address, uint64_t{line.address} + 1,
                               [&](uint64_t, uint64_t, size_t owner) {
                                   if (owner != Stretches::NOBODY) ++sizes.functions[owner].lines;
                               });
    }
}

void AddVariables(const Fst& fst, Sizes& sizes, Owners& owners) {
    for (const Symbol& symbol : StaticVariables(fst)) {
        const uint64_t begin = symbol.record.value;
        owners.variables.Add(begin, begin + symbol.record.size, sizes.variables.size());
        sizes.variables.push_back({symbol, 0, 0});
    }
}

// The module that a variable belongs to, the last one of the list for nobody.
ModuleSize& ModuleOf(Sizes& sizes, const Symbol& symbol) {
    const int64_t module = symbol.record.module;
    const bool has_module = module >= 0 && static_cast<size_t>(module) + 1 < sizes.modules.size();
    return has_module ? sizes.modules[static_cast<size_t>(module)] : sizes.modules.back();
}

// What stands in the image outside of the ranges.
void CountConstants(Sizes& sizes, const Owners& owners, uint64_t begin, uint64_t end,
                    MemorySize& memory) {
    owners.variables.Split(begin, end, [&](uint64_t from, uint64_t to, size_t owner) {
        const uint64_t count = to - from;
        if (owner != Stretches::NOBODY) {
            sizes.variables[owner].constants += count;
            ModuleOf(sizes, sizes.variables[owner].symbol).bytes.constants += count;
            memory.constants += count;
            return;
        }
        Bytes& nobody = sizes.modules.back().bytes;
        (memory.memory == MEM_CODE ? nobody.code : nobody.constants) += count;
        memory.nobody += count;
    });
}

void CountImage(const Fst& fst, Sizes& sizes, const Owners& owners) {
    for (const inspector::CodeBlock& block : fst.code) {
        const uint64_t begin = block.head.address;
        const uint64_t end = begin + block.head.length;
        const bool continues = !sizes.memories.empty() &&
                               sizes.memories.back().memory == block.head.mem_type &&
                               sizes.memories.back().address + sizes.memories.back().size == begin;
        if (!continues)
            sizes.memories.push_back({block.head.mem_type, block.head.address, 0, 0, 0, 0});
        MemorySize& memory = sizes.memories.back();
        memory.size += end - begin;
        sizes.image += end - begin;
        owners.ranges.Split(begin, end, [&](uint64_t from, uint64_t to, size_t module) {
            if (module == Stretches::NOBODY) return CountConstants(sizes, owners, from, to, memory);
            sizes.modules[module].bytes.code += to - from;
            memory.code += to - from;
            owners.functions.Split(from, to, [&](uint64_t piece, uint64_t piece_end, size_t owner) {
                const bool is_outside = owner == Stretches::NOBODY;
                (is_outside ? sizes.code_outside_functions : sizes.functions[owner].code) +=
                    piece_end - piece;
            });
        });
    }
}

void CountData(Sizes& sizes, const Owners& owners) {
    for (const Stretch& variable : owners.variables.list()) {
        owners.image.Split(
            variable.begin, variable.end, [&](uint64_t from, uint64_t to, size_t owner) {
                if (owner != Stretches::NOBODY) return;
                sizes.variables[variable.owner].data += to - from;
                ModuleOf(sizes, sizes.variables[variable.owner].symbol).bytes.data += to - from;
            });
    }
}

// The larger first; of equal ones the order that they have.
template <class Item, class SizeOf>
void SortBySize(std::vector<Item>& items, SizeOf size_of) {
    std::stable_sort(items.begin(), items.end(),
                     [&](const Item& a, const Item& b) { return size_of(a) > size_of(b); });
}

}  // namespace

Sizes SizesOf(const Fst& fst) {
    Sizes sizes;
    const uint64_t modules = UsableEntries(fst, inspector::MODULES);
    for (uint32_t i = 0; i < modules; ++i) sizes.modules.emplace_back().module = i;
    sizes.modules.emplace_back();  // nobody

    Owners owners;
    AddRanges(fst, sizes, owners);
    AddFunctions(fst, sizes, owners);
    AddLines(fst, sizes, owners);
    AddVariables(fst, sizes, owners);
    std::vector<std::pair<uint64_t, uint64_t>> image;
    for (const inspector::CodeBlock& block : fst.code)
        image.emplace_back(block.head.address, uint64_t{block.head.address} + block.head.length);
    std::sort(image.begin(), image.end());
    for (const auto& [begin, end] : image) owners.image.Add(begin, end, 0);
    CountImage(fst, sizes, owners);
    CountData(sizes, owners);

    sizes.nobody = sizes.modules.back().bytes;
    for (const ModuleSize& module : sizes.modules) {
        sizes.bytes.code += module.bytes.code;
        sizes.bytes.constants += module.bytes.constants;
        sizes.bytes.data += module.bytes.data;
    }
    SortBySize(sizes.modules, [](const ModuleSize& module) {
        return module.bytes.code + module.bytes.constants + module.bytes.data;
    });
    SortBySize(sizes.memories, [](const MemorySize& memory) { return memory.size; });
    SortBySize(sizes.functions, [](const FunctionSize& function) { return function.record.size; });
    SortBySize(sizes.variables,
               [](const VariableSize& variable) { return variable.symbol.record.size; });
    return sizes;
}

}  // namespace scan695::ask
