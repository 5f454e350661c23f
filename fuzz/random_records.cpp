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
    const auto nested = [&] { return RandomType(random, depth + 1); };
    switch (depth > 2 ? 99 : Below(random, 18)) {
        case 0:
            return RandomFunction(random, depth);
        case 1:
            return def::Array(nested(), RandomNumber(random));
        case 2:
            return def::PointerAttribute(3, nested(), Below(random, 300));
        case 3:
            return def::SmallPointer(nested());
        case 4:
            return def::LargePointer(nested());
        case 5:
        case 6:
        case 7:
            return def::Struct(Below(random, 9), RandomMembers(random, depth));
        case 8:
            return def::Union(Below(random, 9), RandomMembers(random, depth));
        case 9:
            return def::Enum({{"RED", RandomNumber(random)}, {"BLUE", 1}},
                             EnumSize(static_cast<uint8_t>(Below(random, 5))));
        case 10:
            return def::Typedef(RandomTypeNumber(random));
        case 11:
            return def::OtherTypedef(RandomTypeNumber(random));
        case 12:
        case 13:
            return def::Bitfield(Below(random, 2), Below(random, 34));
        case 14:
            return def::Qualified(Below(random, 300), nested());
        default:
            return RandomTypeNumber(random);
    }
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
    switch (Below(random, 14)) {
        case 0:
        case 1:
            return AutoVariable(i, name, type, x);
        case 2:
            return LivingRegister(i, name, type, x);
        case 3:
        case 4:
            return StaticVariable(i, name, type, address, x);
        case 5:
            return ExternalVariable(i, name, type, address);
        case 6:
        case 7:
            return GlobalVariable(i, name, type, address, Absent());
        case 8:
            return LockedRegister(i, name, type, x);
        case 9:
            return BasedVariable(i, name, type, {1, 2, Below(random, 2), 4, 5}, address);
        case 10:
            return Constant(i, name, type, {0, Below(random, 2), x}, {x, address});
        case 11:
            return AsmSymbol(i, name, type, address, Below(random, 8), Below(random, 2));
        case 12:
            return AsmSymbol(i, name, type, address);
        default:
            return Misc(i, name, 62 + Below(random, 3), 50, {x});
    }
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
    switch (Below(random, 6)) {
        case 0:
        case 1:
            return RandomLifetimes(random, index);
        case 2:
            return ParameterMark(index);
        case 3:
            if (block != 0x0A) return RandomBlock(random, RandomSymbol(random, other), block == 3);
            return AsmLine(other, RandomNumber(random), RandomAddress(random));
        default:
            return RandomSymbol(random, other) + RandomLifetimes(random, other);
    }
}

Bytes RandomLoad(Random& random) {
    switch (Below(random, 4)) {
        case 0:
            return UseSegment(1 + Below(random, 4));
        case 1:
            return LoadAt(1, RandomAddress(random));
        case 2:
            return Repeat(Below(random, 4)) + Load({1, 2, 3});
        default:
            return Load(Times(Below(random, 300), {static_cast<uint8_t>(random())}));
    }
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
    switch (block) {
        case 0:
            return Below(random, 3) == 0 ? RandomAsmModule(random) : RandomModule(random, index);
        case 1:
        case 2:
            return RandomTypeRecord(random, index);
        case 5:
            return RandomLines(random, index);
        default:
            return RandomScopeRecords(random, index, block);
    }
}

Bytes RandomRecords(Random& random, size_t part, uint32_t index) {
    constexpr Memory MEMORIES[] = {Memory::kCode, Memory::kConstants, Memory::kData, Memory::kNone};
    constexpr uint32_t ATTRIBUTES[] = {8, 16, 19, 20};
    switch (part) {
        case SEGMENTS:
            return Segment(1 + Below(random, 4), MEMORIES[Below(random, 4)], "S",
                           RandomAddress(random), Below(random, 64));
        case EXTERNAL:
            return PublicSymbol(32 + Below(random, 8), RandomName(random), RandomTypeNumber(random),
                                ATTRIBUTES[Below(random, 4)], RandomAddress(random));
        case DATA:
            return RandomLoad(random);
        case DEBUG_INFO:
            return RandomDebugRecords(random, 0, index);
        default:
            return Atn(index, 0, 37 + Below(random, 20), 1, 1);
    }
}

}  // namespace scan695::fuzz
