#include "ask/diff.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "ask/image.h"
#include "ask/layouts.h"
#include "ask/places.h"
#include "ask/stretches.h"
#include "ask/type_keys.h"
#include "inspector/lookup.h"
#include "inspector/rows.h"

namespace scan695::ask {

using inspector::ReadEntry;
using inspector::UsableEntries;

namespace {

std::string_view TextAt(const Fst& fst, uint32_t offset) {
    return inspector::NameAt(fst, offset).value_or("");
}

std::string ModuleName(const Fst& fst, int64_t module) {
    return inspector::ModuleNameCell(fst, module).text;
}

// What is matched: symbols with an address, by name.
struct Item {
    uint64_t key;
    uint64_t type;
    Symbol symbol;
    uint32_t size;
    int32_t function;  // block of the function that it lies in, -1 outside of functions
};

class Side {
  public:
    explicit Side(const Fst& fst) : fst_(fst), types_(fst), image_(fst), places_(fst) {
        CollectFunctions();
        CollectItems();
    }

    const Fst& fst() const { return fst_; }
    const TypeKeys& types() const { return types_; }
    const Image& image() const { return image_; }
    const std::vector<Item>& items() const { return items_; }

    DiffSymbol Describe(const Item& item) const {
        return {item.symbol, ModuleName(fst_, item.symbol.record.module),
                std::string(FunctionName(item.function)), item.size};
    }

    // Of what neither a function nor a variable has.
    uint64_t KeyOfRest() const {
        std::vector<std::pair<uint64_t, uint64_t>> owned;
        for (const BLOCKINFO& block : functions_)
            owned.emplace_back(block.address, uint64_t{block.address} + block.size);
        for (const Item& item : items_)
            owned.emplace_back(item.symbol.record.value,
                               uint64_t{item.symbol.record.value} + item.size);
        std::sort(owned.begin(), owned.end());
        Stretches stretches;
        for (const auto& [begin, end] : owned) stretches.Add(begin, end, 0);
        return KeyOutside(image_, stretches);
    }

  private:
    void CollectFunctions() {
        for (uint64_t i = 0; i < UsableEntries(fst_, inspector::BLOCKS); ++i) {
            const auto block = *ReadEntry<BLOCKINFO>(fst_, inspector::BLOCKS, i);
            if (block.is_function != 0) functions_.push_back(block);
        }
        std::sort(functions_.begin(), functions_.end(),
                  [](const BLOCKINFO& a, const BLOCKINFO& b) { return Head(a) < Head(b); });
    }

    static std::tuple<uint32_t, int32_t, uint32_t> Head(const BLOCKINFO& block) {
        return {block.address, block.module, ~block.size};  // the larger first
    }

    // What a code symbol is the beginning of.
    uint32_t SizeOf(const SYMINFO& symbol) const {
        if (symbol.mem_type != MEM_CODE) return symbol.size;
        const std::tuple head = {symbol.value, symbol.module, uint32_t{0}};
        const auto found = std::lower_bound(
            functions_.begin(), functions_.end(), head,
            [](const BLOCKINFO& block, const auto& key) { return Head(block) < key; });
        const bool is_function = found != functions_.end() && found->address == symbol.value &&
                                 found->module == symbol.module;
        return is_function ? found->size : symbol.size;
    }

    std::string_view FunctionName(int32_t block) const {
        const auto record =
            block < 0 ? std::nullopt
                      : ReadEntry<BLOCKINFO>(fst_, inspector::BLOCKS, static_cast<uint32_t>(block));
        const auto number = record ? inspector::FunctionSymbol(fst_, *record) : std::nullopt;
        if (!number) return "";
        return TextAt(fst_, ReadEntry<SYMINFO>(fst_, inspector::SYMBOLS, *number)->name_offs);
    }

    void CollectItems() {
        ForAllSymbols(fst_, [&](const Symbol& symbol) {
            const SYMINFO& record = symbol.record;
            const bool has_address =
                record.storage_class == STORAGE_GLOBAL || record.storage_class == STORAGE_STATIC;
            if (!has_address || record.mem_type == MEM_REGISTER) return;
            const auto function = places_.FunctionOf(record.block);
            Item item = {0, types_.Of(record.type_index), symbol, SizeOf(record),
                         function ? static_cast<int32_t>(function->number) : -1};
            KeyMaker key;
            key.Add(TextAt(fst_, record.name_offs));
            if (record.storage_class == STORAGE_STATIC)
                key.Add(ModuleName(fst_, record.module)).Add(FunctionName(item.function));
            item.key = key.key();
            items_.push_back(item);
        });
        std::sort(items_.begin(), items_.end(), [](const Item& a, const Item& b) {
            return std::tie(a.key, a.symbol.record.value, a.size, a.type) <
                   std::tie(b.key, b.symbol.record.value, b.size, b.type);
        });
    }

    const Fst& fst_;
    TypeKeys types_;
    Image image_;
    Places places_;
    std::vector<BLOCKINFO> functions_;  // by address
    std::vector<Item> items_;           // by key and address
};

struct Programs {
    Side before;
    Side after;
    Differences differences{before.image(), after.image()};
};

bool IsSame(const Item& a, const Item& b) {
    return std::tie(a.symbol.record.value, a.size, a.type) ==
           std::tie(b.symbol.record.value, b.size, b.type);
}

void CompareItems(const Programs& programs, const Item* a, const Item* b, Diff& diff) {
    SymbolChange change;
    if (a != nullptr) change.before = programs.before.Describe(*a);
    if (b != nullptr) change.after = programs.after.Describe(*b);
    if (a != nullptr && b != nullptr) {
        change.is_moved = a->symbol.record.value != b->symbol.record.value;
        change.is_resized = a->size != b->size;
        change.is_retyped = a->type != b->type;
        change.bytes = change.is_resized
                           ? std::max(a->size, b->size)
                           : programs.differences.Count(a->symbol.record.value,
                                                        b->symbol.record.value, a->size);
        if (!change.is_moved && !change.is_resized && !change.is_retyped && change.bytes == 0)
            return;
    }
    diff.symbols.push_back(std::move(change));
}

using Items = std::vector<const Item*>;

// Symbols of one name: first those that are the same are taken together, then in order of address.
void CompareGroups(const Programs& programs, Items a, Items b, Diff& diff) {
    if (a.size() > 1 || b.size() > 1) {
        Items rest_a, rest_b;
        size_t j = 0;
        for (const Item* item : a) {
            while (j < b.size() && !IsSame(*item, *b[j]) &&
                   std::tie(b[j]->symbol.record.value, b[j]->size, b[j]->type) <
                       std::tie(item->symbol.record.value, item->size, item->type))
                rest_b.push_back(b[j++]);
            if (j < b.size() && IsSame(*item, *b[j])) {
                CompareItems(programs, item, b[j++], diff);
            } else {
                rest_a.push_back(item);
            }
        }
        rest_b.insert(rest_b.end(), b.begin() + static_cast<ptrdiff_t>(j), b.end());
        a = std::move(rest_a);
        b = std::move(rest_b);
    }
    for (size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
        CompareItems(programs, i < a.size() ? a[i] : nullptr, i < b.size() ? b[i] : nullptr, diff);
    }
}

void CompareSymbols(const Programs& programs, Diff& diff) {
    const Side& before = programs.before;
    const Side& after = programs.after;
    auto a = before.items().begin();
    auto b = after.items().begin();
    const auto take = [](auto& at, auto end, uint64_t key) {
        Items items;
        for (; at != end && at->key == key; ++at) items.push_back(&*at);
        return items;
    };
    const auto a_end = before.items().end();
    const auto b_end = after.items().end();
    while (a != a_end || b != b_end) {
        const uint64_t key = a == a_end ? b->key : b == b_end ? a->key : std::min(a->key, b->key);
        CompareGroups(programs, take(a, a_end, key), take(b, b_end, key), diff);
    }
    const auto name_of = [&](const SymbolChange& change) {
        const auto& side = change.before ? change.before : change.after;
        const Fst& fst = change.before ? before.fst() : after.fst();
        return std::tuple(TextAt(fst, side->symbol.record.name_offs),
                          std::string_view(side->module), std::string_view(side->function),
                          side->symbol.record.value);
    };
    std::stable_sort(diff.symbols.begin(), diff.symbols.end(),
                     [&](const auto& x, const auto& y) { return name_of(x) < name_of(y); });
}

// The layouts of a file by tag: content and type index of each, equal contents once.
using LayoutMap =
    std::map<std::tuple<std::string, uint8_t, uint64_t>, std::map<uint64_t, uint32_t>>;

LayoutMap LayoutsOf(const Side& side) {
    const Fst& fst = side.fst();
    LayoutMap layouts;
    for (uint64_t i = 0; i < UsableEntries(fst, inspector::TYPES); ++i) {
        const auto type = *ReadEntry<TYPEINFO>(fst, inspector::TYPES, i);
        if (!HasLayout(type)) continue;
        const uint32_t offset = type.type_tag == TAG_ENUMERATION ? type.u.enumeration.name_offs
                                                                 : type.u.structunion.name_offs;
        const std::string name(TextAt(fst, offset));
        const uint64_t content = side.types().OfLayout(type);
        // Types without a tag have nothing but their content to be matched by.
        layouts[{name, type.type_tag, name.empty() ? content : 0}].try_emplace(
            content, type.here_type_index);
    }
    return layouts;
}

void CompareLayouts(const Side& before, const Side& after, Diff& diff) {
    const LayoutMap a = LayoutsOf(before);
    LayoutMap all = LayoutsOf(after);
    const LayoutMap b = all;
    all.insert(a.begin(), a.end());
    const auto only = [](const LayoutMap& in, const LayoutMap& other, const auto& tag) {
        std::vector<uint32_t> types;
        const auto here = in.find(tag);
        const auto there = other.find(tag);
        if (here == in.end()) return types;
        for (const auto& [content, type] : here->second) {
            if (there == other.end() || !there->second.contains(content)) types.push_back(type);
        }
        return types;
    };
    for (const auto& [tag, contents] : all) {
        LayoutChange change = {only(a, b, tag), only(b, a, tag)};
        if (!change.before.empty() || !change.after.empty())
            diff.layouts.push_back(std::move(change));
    }
}

std::map<std::string, ModuleTotals> ModulesOf(const Fst& fst, const Sizes& sizes) {
    std::map<std::string, ModuleTotals> modules;
    for (const ModuleSize& module : sizes.modules) {
        ModuleTotals& totals = modules[module.module ? ModuleName(fst, *module.module) : ""];
        totals.bytes.code += module.bytes.code;
        totals.bytes.constants += module.bytes.constants;
        totals.bytes.data += module.bytes.data;
        totals.lines += module.lines;
    }
    return modules;
}

bool IsSame(const ModuleTotals& a, const ModuleTotals& b) {
    return std::tie(a.bytes.code, a.bytes.constants, a.bytes.data, a.lines) ==
           std::tie(b.bytes.code, b.bytes.constants, b.bytes.data, b.lines);
}

void CompareModules(const Fst& before, const Fst& after, Diff& diff) {
    const Sizes sizes_before = SizesOf(before);
    const Sizes sizes_after = SizesOf(after);
    diff.image_before = sizes_before.image;
    diff.image_after = sizes_after.image;
    const auto a = ModulesOf(before, sizes_before);
    const auto b = ModulesOf(after, sizes_after);
    auto all = a;
    all.insert(b.begin(), b.end());
    for (const auto& [name, totals] : all) {
        const auto x = a.find(name);
        const auto y = b.find(name);
        if (x != a.end() && y != b.end() && IsSame(x->second, y->second)) continue;
        diff.modules.push_back({name, x == a.end() ? std::nullopt : std::optional(x->second),
                                y == b.end() ? std::nullopt : std::optional(y->second)});
    }
}

}  // namespace

Diff Compare(const Fst& before, const Fst& after) {
    Diff diff;
    if (std::equal(before.bytes.begin(), before.bytes.end(), after.bytes.begin(),
                   after.bytes.end())) {
        for (const inspector::CodeBlock& block : before.code)
            diff.image_before += block.head.length;
        diff.image_after = diff.image_before;
        return diff;
    }
    const Programs programs = {Side(before), Side(after)};
    CompareSymbols(programs, diff);
    CompareLayouts(programs.before, programs.after, diff);
    CompareModules(before, after, diff);
    diff.is_rest_changed = programs.before.KeyOfRest() != programs.after.KeyOfRest();
    return diff;
}

}  // namespace scan695::ask
