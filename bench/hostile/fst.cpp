// Tables on their way into the FST file, and FST files for the inspector.
#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "bench/hostile/hostile.h"
#include "builder/object_builder.h"

namespace scan695::bench {

using namespace builder;

namespace {

constexpr uint32_t FIRST_TYPE = 0x100;
constexpr uint32_t INT = 16;
constexpr uint32_t CODE_SIZE = 0x1000;

// Code without a module, so that module ranges are worked out.
ObjectFile WithCode(Bytes debug) {
    ObjectFile file;
    file.debug = std::move(debug);
    file.segments = Segment(1, Memory::CODE, "TEXT", 0, CODE_SIZE);
    file.data = UseSegment(1) + Load(Times(16, {0x90}));
    file.trailer = BracketTrailer(0);
    return file;
}

// Attribute types, each over the one before, and a global of the type that `pick` gives for each.
template <class Pick>
Bytes AttributeChain(uint32_t count, Pick pick) {
    Bytes types;
    Bytes globals;
    for (uint32_t i = 0; i < count; ++i) {
        const uint32_t before = i == 0 ? INT : FIRST_TYPE + i - 1;
        types += NamedType(0x46, "", FIRST_TYPE + i, def::Qualified(1, before));
        globals += GlobalVariable(0x46 + i, "", FIRST_TYPE + pick(i), 2 * i);
    }
    return Build(WithCode(Bb1("M", types) + Bb3("M", globals)));
}
Bytes ChainOfTheLast(uint32_t count) {
    return AttributeChain(count, [count](uint32_t) { return count - 1; });
}
Bytes ChainFromAllLinks(uint32_t count) {
    return AttributeChain(count, [](uint32_t i) { return i; });
}

// Keys that the plain quicksort around the middle entry takes quadratic time for.
std::vector<uint32_t> OrganPipe(uint32_t count) {
    std::vector<uint32_t> keys(count);
    for (uint32_t i = 0; i < count; ++i) keys[i] = std::min(i, count - 1 - i) / 3;
    return keys;
}
std::vector<uint32_t> MiddleIsLargest(uint32_t count) {
    std::vector<uint32_t> keys(count);
    std::vector<uint32_t> order(count);
    std::iota(order.begin(), order.end(), 0);
    for (uint32_t high = count; high-- > 0;) {
        keys[order[high / 2]] = high;
        std::swap(order[high / 2], order[high]);
    }
    return keys;
}

Bytes LinesAt(const std::vector<uint32_t>& addresses) {
    Bytes lines = Nn(0x46, "");
    for (size_t i = 0; i < addresses.size(); ++i)
        lines += Line(0x46, static_cast<uint32_t>(i % 7), 4 * addresses[i]);
    return Build(WithCode(Bb1("M", {}) + Bb3("M", {}) + Bb5("m.c", lines)));
}
Bytes LinesInPipes(uint32_t count) {
    return LinesAt(OrganPipe(count));
}
Bytes LinesAgainstTheSort(uint32_t count) {
    return LinesAt(MiddleIsLargest(count));
}

// Names that differ in their last stored character at most, of which the case does not count.
Bytes NamesAlike(uint32_t count) {
    const std::vector<uint32_t> keys = MiddleIsLargest(count);
    Bytes globals;
    for (uint32_t i = 0; i < count; ++i)
        globals += GlobalVariable(0x46 + i, std::string(30, 'n') + (keys[i] % 2 == 0 ? "Z" : "z"),
                                  INT, 2 * keys[i]);
    return Build(WithCode(Bb1("M", {}) + Bb3("M", globals)));
}

// The same public symbol again and again, and others between.
Bytes Repeats(uint32_t count) {
    Bytes globals;
    for (uint32_t i = 0; i < count; ++i)
        globals += GlobalVariable(0x46 + i, "repeat", INT, i % 2 == 0 ? 0 : i);
    return Build(WithCode(Bb1("M", {}) + Bb3("M", globals)));
}

// Modules with a line each between those of all others; `wraps` gives up the order of the ranges.
Bytes ModulesWithALine(uint32_t count, bool wraps) {
    Bytes debug;
    for (uint32_t i = 0; i < count; ++i) {
        const std::string name = "m" + std::to_string(i);
        const uint32_t address = wraps && i == 0 ? 0xFFFFFFFF : i * 0x9E3779B1U;
        debug +=
            Bb1(name, {}) + Bb3(name, {}) + Bb5(name + ".c", Nn(0x46, "") + Line(0x46, 1, address));
    }
    return Build(WithCode(debug));
}
Bytes ManyModules(uint32_t count) {
    return ModulesWithALine(count, false);
}
Bytes ManyModulesWithoutOrder(uint32_t count) {
    return ModulesWithALine(count, true);
}

// Functions around one another, each of another length: every block splits the one before.
Bytes BlocksInBlocks(uint32_t count) {
    Bytes debug;
    for (uint32_t i = 0; i < count; ++i) {
        const std::string name = "m" + std::to_string(i % 50);
        const uint32_t inset = 4 * (i / 50) + i % 50 * 0x100000;
        debug +=
            Bb1(name, {}) + Bb3(name, Bb4({.name = "f", .begin = inset, .end = 0x8000000 - inset}));
    }
    return Build(WithCode(debug));
}

// Load records of a byte, each over the one behind it.
Bytes OverlappedCode(uint32_t count) {
    ObjectFile file = WithCode({});
    for (uint32_t i = 0; i < count; ++i)
        file.data += LoadAt(1, (count - i) % CODE_SIZE) + Load({0x90, 0x91});
    return Build(file);
}

constexpr HostileCase CASES[] = {
    {"a chain of attributes, globals of its end", ChainOfTheLast, 20'000, true},
    {"a chain of attributes, globals of each link", ChainFromAllLinks, 20'000, true},
    {"lines in the order of organ pipes", LinesInPipes, 60'000, true},
    {"lines ordered against the sort", LinesAgainstTheSort, 60'000, true},
    {"names that are alike but for the case", NamesAlike, 20'000, true},
    {"global symbols again and again", Repeats, 40'000, true},
    {"modules with a line each", ManyModules, 20'000, true},
    {"modules with a line each, addresses wrap", ManyModulesWithoutOrder, 20'000, true},
    {"blocks inside blocks of other modules", BlocksInBlocks, 20'000, true},
    {"code over code", OverlappedCode, 60'000, true},
};

}  // namespace

std::span<const HostileCase> HostileTables() {
    return CASES;
}

}  // namespace scan695::bench
