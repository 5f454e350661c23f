#include "fuzz/random_records.h"

#include "tests/support/object_builder.h"

namespace scan695::fuzz {

using namespace scan695::test;

namespace {

uint32_t RandomAddress(Random& random) {
    constexpr uint32_t EDGES[] = {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF};
    return Below(random, 8) == 0 ? EDGES[Below(random, std::size(EDGES))]
                                 : 0x200 + 2 * Below(random, 16);
}

uint32_t RandomTypeNumber(Random& random) {
    return Below(random, 3) == 0 ? Below(random, 80) : 0x100 + Below(random, 12);
}

Text RandomName(Random& random) {
    constexpr const char* NAMES[] = {"a",     "_a", "main", "_main", "bit", "start",
                                     "_12ab", "",   "x\\y", "MAIN",  "q\"", "b",
                                     "c",     "_",  "\xE4", "z_z"};
    if (Below(random, 16) == 0) return std::string(Below(random, 128), 'n');
    return NAMES[Below(random, std::size(NAMES))];
}

TypeDef RandomType(Random& random, int depth);

std::vector<Member> RandomMembers(Random& random, int depth) {
    std::vector<Member> members(Below(random, 5), {"m", 0, 0});
    for (Member& member : members)
        member = {RandomName(random), RandomType(random, depth + 1), Below(random, 40)};
    return members;
}

TypeDef RandomFunction(Random& random, int depth) {
    FunctionType function;
    function.returns = RandomType(random, depth + 1);
    for (uint32_t n = Below(random, 3); n > 0; --n)
        function.parameters.push_back(RandomType(random, depth + 1));
    function.attributes = Below(random, 64);
    return def::Function(function);
}

TypeDef RandomType(Random& random, int depth) {
    using Make = TypeDef (*)(Random&, int);
    constexpr Make STRUCT = [](Random& r, int d) {
        return def::Struct(Below(r, 9), RandomMembers(r, d));
    };
    constexpr Make BITFIELD = [](Random& r, int) {
        return def::Bitfield(Below(r, 2), Below(r, 34));
    };
    constexpr Make OTHERS[] = {
        STRUCT,
        STRUCT,
        STRUCT,
        BITFIELD,
        BITFIELD,
        RandomFunction,
        [](Random& r, int d) { return def::Array(RandomType(r, d + 1), RandomNumber(r)); },
        [](Random& r, int d) {
            return def::PointerAttribute(3, RandomType(r, d + 1), Below(r, 300));
        },
        [](Random& r, int d) { return def::SmallPointer(RandomType(r, d + 1)); },
        [](Random& r, int d) { return def::LargePointer(RandomType(r, d + 1)); },
        [](Random& r, int d) { return def::Union(Below(r, 9), RandomMembers(r, d)); },
        [](Random& r, int) {
            return def::Enum({{"RED", RandomNumber(r)}, {"BLUE", 1}},
                             EnumSize(static_cast<uint8_t>(Below(r, 5))));
        },
        [](Random& r, int) { return def::Typedef(RandomTypeNumber(r)); },
        [](Random& r, int) { return def::OtherTypedef(RandomTypeNumber(r)); },
        [](Random& r, int d) { return def::Qualified(Below(r, 300), RandomType(r, d + 1)); },
    };
    const size_t choice = depth > 2 ? 99 : Below(random, 18);
    return choice < std::size(OTHERS) ? OTHERS[choice](random, depth) : RandomTypeNumber(random);
}

// A bag of marks; sorting and pairing them is the reader's.
Bytes RandomLifetimes(Random& random, uint32_t index) {
    Bytes marks;
    for (uint32_t n = Below(random, 7); n > 0; --n) {
        const uint32_t storage = 1 + Below(random, 3) + kEndMark * Below(random, 2);
        marks += LifetimeMark(index, 0x200 + 2 * Below(random, 4), storage, Below(random, 3),
                              Below(random, 4) == 0 ? Num(Below(random, 2)) : Absent());
    }
    return marks;
}

Bytes RandomSymbol(Random& random, uint32_t i) {
    const Text name = RandomName(random);
    const uint32_t type = RandomTypeNumber(random);
    const uint32_t x = RandomNumber(random);
    const uint32_t address = RandomAddress(random);
    const uint32_t bit = Below(random, 2);
    const Bytes symbols[] = {
        AutoVariable(i, name, type, x),
        AutoVariable(i, name, type, x),
        LivingRegister(i, name, type, x),
        StaticVariable(i, name, type, address, x),
        StaticVariable(i, name, type, address, x),
        ExternalVariable(i, name, type, address),
        GlobalVariable(i, name, type, address),
        GlobalVariable(i, name, type, address),
        LockedRegister(i, name, type, x),
        BasedVariable(i, name, type, {1, 2, bit, 4, 5}, address),
        Constant(i, name, type, {0, bit, x}, {x, address}),
        AsmSymbol(i, name, type, address, Below(random, 8), bit),
        AsmSymbol(i, name, type, address),
        Misc(i, name, 62 + Below(random, 3), 50, {x}),
    };
    return symbols[Below(random, std::size(symbols))];
}

Bytes RandomLines(Random& random, uint32_t index) {
    Bytes lines = Nn(index, "");
    for (uint32_t n = Below(random, 6); n > 0; --n)
        lines += Below(random, 4) == 0
                     ? StackPoint(index, RandomAddress(random), Below(random, 3) * 2)
                     : Line(index, RandomNumber(random), RandomAddress(random));
    return lines;
}

Bytes RandomTypeRecord(Random& random, uint32_t index) {
    return NamedType(index, RandomName(random), 0x100 + Below(random, 12), RandomType(random, 0));
}

// A small module with types, a scope and lines.
Bytes RandomModule(Random& random, uint32_t index) {
    const Text name = RandomName(random);
    const Bytes symbol = RandomSymbol(random, index + 1) + RandomLifetimes(random, index + 1);
    return Bb1(name, RandomTypeRecord(random, index)) +
           Bb3(name, RandomBlock(random, symbol, true) + RandomSymbol(random, index + 2)) +
           Bb5("dir/m.c", RandomLines(random, index + 3));
}

Bytes RandomAsmModule(Random& random) {
    const uint32_t index = 0x46 + Below(random, 4);
    return Bb10(RandomName(random),
                Bb11({.kind = Below(random, 7), .body = AsmLine(index, 1, RandomAddress(random))}));
}

Bytes RandomScopeRecords(Random& random, uint32_t index, uint8_t block) {
    const uint32_t other = 0x46 + Below(random, 4);
    const uint32_t choice = Below(random, 6);
    if (choice < 2) return RandomLifetimes(random, index);
    if (choice == 2) return ParameterMark(index);
    if (choice > 3) return RandomSymbol(random, other) + RandomLifetimes(random, other);
    return block == 0x0A ? AsmLine(other, RandomNumber(random), RandomAddress(random))
                         : RandomBlock(random, RandomSymbol(random, other), block == 3);
}

Bytes RandomLoad(Random& random) {
    const Bytes loads[] = {UseSegment(1 + Below(random, 4)), LoadAt(1, RandomAddress(random)),
                           Repeat(Below(random, 4)) + Load({1, 2, 3}),
                           Load(Times(Below(random, 300), {static_cast<uint8_t>(random())}))};
    return loads[Below(random, std::size(loads))];
}

}  // namespace

uint32_t RandomNumber(Random& random) {
    constexpr uint32_t EDGES[] = {0,    1,      2,       0x7F,       0x80,       0xFF,      0x100,
                                  0x10, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    if (Below(random, 3) == 0) return EDGES[Below(random, std::size(EDGES))];
    return Below(random, 2) == 0 ? Below(random, 16) : RandomAddress(random);
}

Bytes RandomBlock(Random& random, const Bytes& body, bool global) {
    const uint32_t begin = RandomAddress(random);
    const FunctionBlock block = {.name = RandomName(random),
                                 .stack = Below(random, 8),
                                 .type = RandomTypeNumber(random),
                                 .begin = begin,
                                 .end = begin + Below(random, 16),
                                 .body = body};
    return global && Below(random, 2) == 0 ? Bb4(block) : Bb6(block);
}

Bytes RandomModules(Random& random, uint32_t most) {
    Bytes modules;
    for (uint32_t n = 1 + Below(random, most); n > 0; --n)
        modules += RandomModule(random, 0x46 + Below(random, 100));
    return modules;
}

Bytes RandomDebugRecords(Random& random, uint8_t block, uint32_t index) {
    if (block == 0)
        return Below(random, 3) == 0 ? RandomAsmModule(random) : RandomModule(random, index);
    if (block <= 2) return RandomTypeRecord(random, index);
    return block == 5 ? RandomLines(random, index) : RandomScopeRecords(random, index, block);
}

Bytes RandomRecords(Random& random, size_t part, uint32_t index) {
    constexpr uint32_t ATTRIBUTES[] = {8, 16, 19, 20};
    if (part == DEBUG_INFO) return RandomDebugRecords(random, 0, index);
    if (part == DATA) return RandomLoad(random);
    if (part == SEGMENTS)
        return Segment(1 + Below(random, 4), static_cast<Memory>(Below(random, 4)), "S",
                       RandomAddress(random), Below(random, 64));
    if (part == EXTERNAL)
        return PublicSymbol(32 + Below(random, 8), RandomName(random), RandomTypeNumber(random),
                            ATTRIBUTES[Below(random, 4)], RandomAddress(random));
    return Atn(index, 0, 37 + Below(random, 20), 1, 1);
}

}  // namespace scan695::fuzz
