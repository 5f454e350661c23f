// Types: chains, lists and references that never come.
#include "bench/hostile/hostile.h"
#include "builder/object_builder.h"

namespace scan695::bench {

namespace {

using namespace builder;

constexpr uint32_t FIRST = 256;       // tk_ti of the first type of a block
constexpr uint32_t NEVER = 0x300000;  // from here on, types that no block defines
constexpr uint32_t IDENT = 0x46;

Bytes TypesModule(const std::string& module, const Bytes& records) {
    return Bb1(module, Bytes{0xF0} + Num(IDENT) + Text("t") + records);
}

Bytes Define(uint32_t tk_ti, const TypeDef& definition) {
    return TypeRecord(tk_ti, IDENT, definition);
}

Bytes Globals(uint32_t count, uint32_t type) {
    Bytes symbols;
    for (uint32_t i = 0; i < count; ++i) symbols += GlobalVariable(IDENT + i, "v", type, i, 9);
    return Bb3("M", symbols);
}

Bytes Program(const Bytes& debug) {
    return Build({.processor = "80166", .debug = debug, .trailer = Trailer(0)});
}

// Each attribute lies over the one before, and each symbol is of the last one.
Bytes AttributeChain(uint32_t size) {
    Bytes types;
    for (uint32_t i = 0; i < size; ++i)
        types += Define(FIRST + i, def::Qualified(1, i == 0 ? 16 : FIRST + i - 1));
    return Program(TypesModule("M", types) + Globals(size, FIRST + size - 1));
}

// The same chain, each attribute over one that is still to come.
Bytes ForwardChain(uint32_t size) {
    Bytes types;
    for (uint32_t i = 0; i < size; ++i)
        types += Define(FIRST + i, def::Qualified(1, i + 1 == size ? 16 : FIRST + i + 1));
    return Program(TypesModule("M", types) + Globals(size, FIRST));
}

// Arrays over the near end of a chain that grows at its far end.
Bytes ArraysOverAChain(uint32_t size) {
    Bytes types;
    for (uint32_t i = 0; i < size; ++i)
        types += Define(FIRST + 2 * i, def::Qualified(1, FIRST + 2 * i + 2)) +
                 Define(FIRST + 2 * i + 1, def::Array(FIRST, 1));
    return Program(TypesModule("M", types));
}

// A struct whose members wait for types from `first` on, `step` apart. With the type's name their
// names take whole list elements in the image: a list that lies over others then shows them as they
// are, and nothing stands for a name that is none.
TypeDef WaitingStruct(uint32_t count, uint32_t first, uint32_t step = 1) {
    Bytes members;
    for (uint32_t i = 0; i < (count | 3); ++i)
        members += Bytes(Text("m")) + Num(first + i * step) + Num(i % 2);
    return TypeDef(Bytes{'S', 4} + members + Bytes{0});
}

// What an overlong list can claim, `size` bytes of the image: the STF text lists these members too.
Bytes Padding(uint32_t size) {
    constexpr uint32_t ITEM = 20;  // with its name
    Bytes records;
    for (uint32_t done = 0; done <= size; done += 3999 * ITEM)
        records += Define(FIRST, def::Enum(std::vector<EnumItem>(3999, {"p", 1})));
    return TypesModule("P", records);
}

// A module that refers to a type and then defines it.
Bytes ResolvingModule(uint32_t type, const TypeDef& definition = 5) {
    return TypesModule("R", Define(FIRST, def::SmallPointer(type)) + Define(type, definition));
}

// Structs that claim more members than they store, and modules with a reference each.
Bytes OverlongLists(uint32_t size) {
    Bytes types;
    for (uint32_t i = 0; i < size / 100; ++i)
        types += Define(FIRST + i, WaitingStruct(5000, NEVER));
    Bytes debug = TypesModule("M", types);
    for (uint32_t i = 0; i < size; ++i)
        debug += ResolvingModule(0x100000 + i, def::SmallPointer(5));
    return Program(debug + Padding(0x10000));
}

// Each module lets one member of a long struct get the type that it waits for, which is a bitfield
// by its number and nothing of the kind by its place in the table.
Bytes BitfieldsThatAreNone(uint32_t size) {
    Bytes types = Define(FIRST, WaitingStruct(size, 0x100000));
    for (uint32_t i = 0; i < 3 * size; ++i) types += Define(FIRST + 1 + i, def::Typedef(NEVER));
    Bytes debug = TypesModule("M", types);
    for (uint32_t i = 0; i < size; ++i)
        debug += ResolvingModule(0x100000 + i, def::Bitfield(0, 3, Omitted()));
    return Program(debug + Padding(16 * size));
}

// A struct that claims what lies behind it: members of other structs, each of which gets its type
// at last. Every time the long struct is the one whose bitfields can be placed.
Bytes LateBitfields(uint32_t size) {
    constexpr uint32_t MEMBERS = 3999;  // of a struct that waits
    Bytes types = Define(FIRST, WaitingStruct(6 * size, 2, 0));
    uint32_t waiting = 0;
    for (; waiting < size; waiting += MEMBERS)
        types += Define(FIRST, WaitingStruct(MEMBERS, 0x100000 + waiting));
    // Numbers that no record has, so that no bitfield is one by its place in the table.
    for (uint32_t i = 0; i < 3 * size; ++i) types += Define(FIRST + 1 + i, def::Typedef(NEVER));
    Bytes late;
    for (uint32_t i = 0; i < size; ++i)
        late += Define(FIRST, def::SmallPointer(0x100000 + i)) +
                Define(0x100000 + i, def::Bitfield(0, 3, Omitted()));
    return Program(TypesModule("M", types) + Padding(16 * 6 * size) + TypesModule("R", late));
}

// Numbers that all meet in a table with a known multiplier.
Bytes MeetingNumbers(uint32_t size) {
    Bytes types;
    for (uint32_t i = 1; types.size() < 12 * size_t{size}; ++i)
        if (const uint32_t tk_ti = i * 0x144CBC89; tk_ti >= FIRST)
            types += Define(tk_ti, def::SmallPointer(2));
    return Program(TypesModule("M", types));
}

// References that stay, while one type that was waited for is defined again and again.
Bytes StayingReferences(uint32_t size) {
    Bytes types =
        Define(FIRST, def::SmallPointer(NEVER)) + Define(FIRST, WaitingStruct(size, NEVER));
    for (uint32_t i = 0; i < size; ++i) types += Define(NEVER - 1, def::SmallPointer(NEVER - 1));
    return Program(TypesModule("M", types) + Padding(16 * size));
}

// The deepest nesting, again and again.
Bytes DeepTypes(uint32_t size) {
    TypeDef nested = 2;
    for (uint32_t i = 0; i < 990; ++i)
        nested = TypeDef(Bytes{'S', 1, 1, 'm'} + nested.bytes + Bytes{0, 0});
    Bytes types;
    for (uint32_t i = 0; i < size; ++i) types += Define(FIRST + i, nested);
    return Program(TypesModule("M", types));
}

constexpr HostileCase CASES[] = {
    {"symbols of a chain of attributes", AttributeChain, 40000, true},
    {"symbols of a chain of forward references", ForwardChain, 40000, true},
    {"arrays over a growing chain", ArraysOverAChain, 40000, false},
    {"lists that claim more than they have", OverlongLists, 4000, false},
    {"the same, traced", OverlongLists, 400, true},
    {"bitfields that turn out to be none", BitfieldsThatAreNone, 10000, false},
    {"members that turn out to be bitfields", LateBitfields, 10000, false},
    {"type numbers that meet", MeetingNumbers, 100000, false},
    {"references that stay", StayingReferences, 20000, false},
    {"deep structs", DeepTypes, 160, false},
};

}  // namespace

std::span<const HostileCase> HostileTypes() {
    return CASES;
}

}  // namespace scan695::bench
