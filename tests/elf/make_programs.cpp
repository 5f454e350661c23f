// Writes programs for the deep tests of ELF files into a folder: make_programs FOLDER [SIZE].
// "odd_" programs hold what no compiler writes, "large_" programs much of one kind, SIZE times what
// a short test needs.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/programs.h"
#include "builder/object_builder.h"

namespace scan695::test {
namespace {

using namespace builder;

constexpr uint32_t INT = 16;
constexpr uint32_t CHAR = 2;
constexpr uint32_t TOP = 0xFFFFFF00;

ObjectFile Program(const Bytes& debug, uint32_t base = 0x1000, uint32_t size = 0x100) {
    return {.processor = "TRI",
            .segments = Segment(1, Memory::CODE, "TEXT", base, size),
            .debug = debug,
            .data = UseSegment(1) + Load(Times(size, {0x5A})),
            .trailer = BracketTrailer(base)};
}

// Empty, longer than what is stored, repeated, beyond ASCII, with characters that cut a line.
ObjectFile Names() {
    const std::string names[] = {"",
                                 std::string(32, 'n'),
                                 "twice",
                                 "twice",
                                 "gr\xF6\xDF"
                                 "e",
                                 "a\nb\t",
                                 "%s%n",
                                 "T$4",
                                 "T$4",
                                 "\x01\x7F\xFF"};
    Indexes index;
    Bytes types, symbols, functions;
    uint32_t number = 0;
    for (const std::string& name : names) {
        const uint32_t at = number++;
        types += NamedType(index(), name, 0x100 + at,
                           at % 2 == 0 ? def::Struct(at + 1, {{name + "m", CHAR, at}})
                                       : def::Enum({{name + "i", at}}));
        symbols += GlobalVariable(index(), name, 0x100 + at, 0x8000 + 16 * at) +
                   StaticVariable(index(), name, INT, 0x9000 + 16 * at);
        functions += Bb4({.name = name,
                          .begin = 0x1000 + 16 * at,
                          .end = 0x100F + 16 * at,
                          .body = AutoVariable(index(), name, INT, at)});
    }
    const std::string module =
        "\xC4"
        "module";
    return Program(Bb1(module, types) + Bb3(module, functions + symbols) +
                   Bb5(module + ".c", Nn(0x46, "") + Line(0x46, 0, 0x1000)) +
                   Bb10("", AsmSymbol(0x46, "label", 15, 0x1010, 2, 1)));
}

// Types that hold themselves, point to themselves, return or take themselves, and targets that
// never come.
ObjectFile Types() {
    const auto type = [](uint32_t number, const TypeDef& definition) {
        return NamedType(0x46, "t" + std::to_string(number), number, definition);
    };
    const Bytes types =
        type(0x100, def::SmallPointer(0x100)) + type(0x101, def::SmallPointer(0x102)) +
        type(0x102, def::Array(0x101, 3)) + type(0x103, def::Struct(4, {{"self", 0x103, 0}})) +
        type(0x104, def::Struct(8, {{"a", 0x105, 0}})) +
        type(0x105, def::Union(8, {{"b", 0x106, 0}, {"c", INT, 0}})) +
        type(0x106, def::Array(0x104, 1)) +
        type(0x107, def::Function({.returns = 0x107, .parameters = {0x107, 0x108}})) +
        type(0x108, def::SmallPointer(0x107)) + type(0x109, def::Array(0x109, 1)) +
        type(0x10A, def::Qualified(1, 0x10B)) + type(0x10B, def::SmallPointer(0x10A)) +
        type(0x10C, def::Struct(4, {{"never", 0x1FF, 0}, {"p", def::SmallPointer(0x1FE), 0}})) +
        type(0x10D, def::Struct(0, {})) + type(0x10E, def::Array(INT, -1)) +
        type(0x10F, def::Array(INT, -3)) +
        type(0x110, def::Struct(4, {{"far", INT, 0x7FFFFFF0},
                                    {"w", def::Bitfield(1, 32), 0},
                                    {"z", def::Bitfield(0, 0), 40}}));
    Bytes symbols;
    for (uint32_t i = 0; i <= 0x10; ++i) {
        symbols += GlobalVariable(0x50 + i, "v" + std::to_string(i), 0x100 + i, 0x8000 + 64 * i);
    }
    return Program(
        Bb1("M", types) +
        Bb3("M", symbols + Bb4({.name = "main", .type = 0x107, .begin = 0x1000, .end = 0x100F})));
}

// Blocks that wrap, overlap, lie outside the block around them, and repeat.
ObjectFile Blocks() {
    const auto inner = [](uint32_t begin, uint32_t end, const Bytes& body = {}) {
        return Bb6({.begin = begin, .end = end, .body = body});
    };
    const Bytes variable = AutoVariable(0x47, "x", INT, -4);
    const Bytes functions =
        Bb4({.name = "main",
             .begin = 0x1000,
             .end = 0x103F,
             .body = variable + inner(0x1010, 0x102F, variable) + inner(0x1020, 0x105F, variable) +
                     inner(0x1020, 0x105F) + inner(0x3000, 0x300F, variable)}) +
        Bb4({.name = "wraps", .begin = 0x1080, .end = 0x1000, .body = variable}) +
        Bb4({.name = "empty", .begin = 0x1080, .end = 0x107F, .body = variable}) +
        Bb4({.name = "main", .begin = 0x1000, .end = 0x103F}) +
        Bb6({.name = "over", .begin = 0x1030, .end = 0x106F, .body = variable}) +
        Bb4({.name = "low", .begin = 0, .end = 3, .body = variable});
    const auto lines = [](uint32_t first, uint32_t step) {
        Bytes body = Nn(0x46, "");
        for (uint32_t i = 0; i < 12; ++i) body += Line(0x46, 1 + i * 7 % 5, first + step * i);
        return body;
    };
    return Program(Bb1("M", {}) + Bb3("M", functions) + Bb5("m.c", lines(0x1000, 8)) +
                   Bb1("N", {}) + Bb3("N", Bb4({.name = "n", .begin = 0x1010, .end = 0x104F})) +
                   Bb5("n.c", lines(0x1004, 8)) + Bb1("E", {}) + Bb3("E", {}));
}

// Everything at the top of the address space.
ObjectFile Top() {
    const Bytes body =
        LockedRegister(0x48, "r", INT, 4) + Lifetime(0x48, 0xFFFFFFF0, 0xFFFFFFFF, 2, 4);
    return Program(
        Bb1("M", {}) +
            Bb3("M", Bb4({.name = "main", .begin = TOP, .end = 0xFFFFFFFF, .body = body}) +
                         GlobalVariable(0x46, "last", INT, 0xFFFFFFFF)) +
            Bb5("m.c", Nn(0x46, "") + Line(0x46, 1, TOP) + Line(0x46, 2, 0xFFFFFFFE) +
                           Line(0x46, 3, 0xFFFFFFFF)),
        TOP);
}

// Code that overlaps other code, and memories that share addresses.
ObjectFile Overlaps() {
    ObjectFile file = Program(Bb10("M", AsmSymbol(0x46, "label", 15, 0x1010, 2, 1)));
    file.segments += Segment(2, Memory::DATA, "DATA", 0x1080, 0x100) +
                     Segment(3, Memory::CODE, "MORE", 0x10C0, 0x100);
    file.data += UseSegment(2) + Load(Times(0x100, {0xDA})) + UseSegment(3) +
                 Load(Times(0x100, {0xC0})) + LoadAt(1, 0x1008) + Load({1, 2, 3, 4});
    return file;
}

void Write(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

}  // namespace
}  // namespace scan695::test

int main(int argc, char** argv) {
    using namespace scan695;
    if (argc < 2) return 2;
    const std::filesystem::path folder = argv[1];
    const uint32_t size = argc > 2 ? static_cast<uint32_t>(std::atoi(argv[2])) : 1;
    std::filesystem::create_directories(folder);
    test::Write(folder / "odd_names.abs", Build(test::Names()));
    test::Write(folder / "odd_types.abs", Build(test::Types()));
    test::Write(folder / "odd_blocks.abs", Build(test::Blocks()));
    test::Write(folder / "odd_top.abs", Build(test::Top()));
    test::Write(folder / "odd_overlaps.abs", Build(test::Overlaps()));
    test::Write(folder / "large_types.abs", bench::TypesProgram(2000 * size, 100));
    test::Write(folder / "large_symbols.abs", bench::SymbolsProgram(1000 * size));
    test::Write(folder / "large_lines.abs", bench::LinesProgram(4000 * size, false));
    test::Write(folder / "large_mixed.abs", bench::LinesProgram(2000 * size, true));
    test::Write(folder / "large_blocks.abs", bench::BlocksProgram(500 * size));
    test::Write(folder / "large_stack.abs", bench::StackPointsProgram(1000 * size));
    test::Write(folder / "large_code.abs", bench::CodeProgram(0x10000 * size));
    return 0;
}
