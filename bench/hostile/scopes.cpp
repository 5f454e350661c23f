// Blocks, symbols, lifetimes, lines, public symbols and code.
#include <string>

#include "bench/hostile/hostile.h"
#include "builder/object_builder.h"

namespace scan695::bench {

namespace {

using namespace builder;

constexpr uint32_t INDEX = 0x46;  // of one symbol; neighbours have one each, in turn
constexpr uint32_t DEPTH = 990;
constexpr uint32_t NO_END = 0xFFFFFFFF;
constexpr uint32_t AUTO = 1;
constexpr uint32_t INT = 6;

Bytes WithDebug(const Bytes& debug, const Bytes& external = {}) {
    return Build({.external = external, .debug = debug, .trailer = Trailer(0)});
}

// A module needs its block of types in front.
Bytes Module(const Bytes& body) {
    return Bb1("M_C", {}) + Bb3("M_C", body);
}

Bytes InFunction(const Bytes& body) {
    return WithDebug(
        Module(Bb4({.name = "f", .type = INT, .begin = 0, .end = NO_END, .body = body})));
}

// `count` times what `make` makes of the number.
template <class Make>
Bytes Each(uint32_t count, const Make& make) {
    Bytes all;
    for (uint32_t i = 0; i < count; ++i) all += make(i);
    return all;
}

uint32_t IndexOf(uint32_t number) {
    return INDEX + number % 2;
}

std::string Name(const char* stem, uint32_t number) {
    return stem + std::to_string(number);
}

// One variable whose marks all stand at one address: ends and begins of one place each.
Bytes MarksAtOneAddress(uint32_t size) {
    return InFunction(AutoVariable(INDEX, "v", INT, 2) + LifetimeMark(INDEX, 1, AUTO, 0) +
                      Each(size / 2, [size](uint32_t i) {
                          return LifetimeMark(INDEX, 16, AUTO | END_MARK, i) +
                                 LifetimeMark(INDEX, 16, AUTO, size / 2 - i);
                      }));
}

// The same with twice as many begins as ends, each of which has a twin.
Bytes SurplusMarks(uint32_t size) {
    return InFunction(AutoVariable(INDEX, "v", INT, 2) + Each(size / 3, [](uint32_t i) {
                          return LifetimeMark(INDEX, 16, AUTO | END_MARK, i) +
                                 LifetimeMark(INDEX, 16, AUTO, i) +
                                 LifetimeMark(INDEX, 16, AUTO, i);
                      }));
}

// Ranges that go on in the next one and those that do not, in turn.
Bytes ManyRanges(uint32_t size) {
    return InFunction(AutoVariable(INDEX, "v", INT, 2) + Each(size, [](uint32_t i) {
                          return Lifetime(INDEX, 4 * i, 4 * i + 4, AUTO, i / 2);
                      }));
}

Bytes OpenVariable(uint32_t number = 0) {
    const uint32_t index = IndexOf(number);
    return AutoVariable(index, "v", INT, 2) + LifetimeMark(index, 16, AUTO, 2);
}

// Open lifetimes inside blocks whose own end is no end.
Bytes LifetimesWithoutEnd(uint32_t size) {
    Bytes body = Each(size, OpenVariable);
    for (uint32_t i = 0; i < DEPTH; ++i)
        body = Bb6({.begin = 0, .end = NO_END, .body = OpenVariable(i + 1) + body});
    return InFunction(body);
}

// A list too long to be stored stays open, and every block around it looks. The place that it looks
// at has to exist: names take up the image.
Bytes OverlongLifetime(uint32_t size) {
    const Bytes list = AutoVariable(INDEX, "v", INT, 2) + Each(4097, [](uint32_t i) {
                           return Lifetime(INDEX, 8 * i, 8 * i + 4, AUTO, i);
                       });
    Bytes body = list + Each(size, [](uint32_t i) {
                     return AutoVariable(IndexOf(i + 1), std::string(31, 'n'), INT, i);
                 });
    for (uint32_t i = 0; i < DEPTH; ++i)
        body = Bb6({.begin = 0, .end = NO_END, .body = OpenVariable(i + 1) + body});
    return InFunction(body);
}

Bytes Publics(uint32_t count) {
    return Each(count, [](uint32_t i) { return PublicSymbol(32, Name("p", i), 0, 19, i); });
}

// Half of the symbols are not in the external part.
Bytes AsmSymbols(uint32_t size) {
    const Bytes symbols = Each(
        size, [size](uint32_t i) { return AsmSymbol(IndexOf(i), Name("p", size / 2 + i), 0, i); });
    return WithDebug(Bb10("A", symbols), Publics(size));
}

// Public symbols that the debug part has defined, and their repeats.
Bytes KnownPublics(uint32_t size) {
    const Bytes known =
        Each(size / 2, [](uint32_t i) { return GlobalVariable(IndexOf(i), Name("p", i), INT, i); });
    return WithDebug(Module(known), Publics(size) + Publics(size));
}

Bytes RejectedPublics(uint32_t size) {
    return Build({.external = Each(
                      size, [](uint32_t i) { return PublicSymbol(32, Name("?", i), 0, 19, i); })});
}

Bytes EqualModules(uint32_t size) {
    return WithDebug(Each(size, [](uint32_t) { return Bb10("A", {}); }));
}

Bytes Functions(uint32_t count, uint32_t step, uint32_t length) {
    return Module(Each(count, [=](uint32_t i) {
        return Bb4({.name = "f", .type = INT, .begin = i * step, .end = i * step + length});
    }));
}

// Functions that lie over one another, and points that jump between them.
Bytes StackPoints(uint32_t size) {
    const Bytes points = Each(
        size, [size](uint32_t i) { return StackPoint(INDEX, i * 7919 % size * 4, i % 2 * 4); });
    return WithDebug(Functions(size, 4, 64) + Bb5("m.c", points));
}

// Small functions first, then one over all of them, again and again.
Bytes CoveredFunctions(uint32_t size) {
    const Bytes blocks = Each(size, [size](uint32_t i) {
        const uint32_t begin = i % 2 == 0 ? 16 * i : 0;
        return Bb4(
            {.name = "f", .type = INT, .begin = begin, .end = i % 2 == 0 ? begin : 16 * size});
    });
    const Bytes points = Each(size, [](uint32_t i) { return StackPoint(INDEX, i, 1); });
    return WithDebug(Module(blocks) + Bb5("m.c", points));
}

Bytes DeepBlocks(uint32_t size) {
    Bytes nest;
    for (uint32_t i = 0; i < DEPTH; ++i)
        nest = Bb6({.begin = i, .end = 2000, .body = OpenVariable() + nest});
    return WithDebug(Module(Bb4({.name = "f", .end = NO_END, .body = Times(size, nest)})));
}

Bytes DeepFiles(uint32_t size) {
    Bytes nest;
    for (uint32_t i = 0; i < DEPTH; ++i) nest = Bb5("m.c", nest);
    return WithDebug(Module({}) + Times(size, nest));
}

Bytes CodeOf(const Bytes& records) {
    return Build({.segments = Segment(1, Memory::CODE, "code", 0x1000, 0x1000),
                  .data = UseSegment(1) + records});
}

Bytes FallingCode(uint32_t size) {
    return CodeOf(Each(size, [size](uint32_t i) {
        return LoadAt(1, 4 * (size - i)) + Load({1, 2});
    }));
}

Bytes CodeAtOneAddress(uint32_t size) {
    return CodeOf(Times(size, LoadAt(1, 16) + Load({1})));
}

// The repeats are limited by the size of the table, not by the size of the input; here they come
// to a byte of code for each byte of a large file.
Bytes RepeatedByte(uint32_t size) {
    return CodeOf(Repeat(size) + Load({1}));
}

// Two repeats that lie over each other.
Bytes RepeatsOverRepeats(uint32_t size) {
    return CodeOf(Repeat(size / 2) + Load({1, 2}) + LoadAt(1, 0x1001) + Repeat(size / 2) +
                  Load({3, 4}));
}

constexpr HostileCase CASES[] = {
    {"marks at one address", MarksAtOneAddress, 40000, false},
    {"marks at one address, traced", MarksAtOneAddress, 10000, true},
    {"begins in surplus at one address", SurplusMarks, 24000, false},
    {"ranges of one variable", ManyRanges, 20000, false},
    {"open lifetimes in blocks without end", LifetimesWithoutEnd, 32000, false},
    {"a list of lifetimes too long to store", OverlongLifetime, 16000, false},
    {"assembler symbols to look up", AsmSymbols, 32000, false},
    {"public symbols that are known", KnownPublics, 20000, false},
    {"public symbols with unfit names", RejectedPublics, 50000, false},
    {"modules of one name", EqualModules, 80000, false},
    {"functions over one another, stack points", StackPoints, 20000, true},
    {"functions that cover all others", CoveredFunctions, 20000, false},
    {"nested blocks", DeepBlocks, 32, false},
    {"nested source files", DeepFiles, 64, false},
    {"code from high to low", FallingCode, 100000, false},
    {"code at one address", CodeAtOneAddress, 160000, false},
    {"a byte repeated", RepeatedByte, 16000000, false},
    {"repeats over repeats", RepeatsOverRepeats, 16000000, false},
};

}  // namespace

std::span<const HostileCase> HostileScopes() {
    return CASES;
}

}  // namespace scan695::bench
