#include "bench/programs.h"

#include <string>

#include "builder/object_builder.h"

namespace scan695::bench {

using namespace builder;

namespace {

constexpr uint32_t FIRST_TYPE = 0x100;
constexpr uint32_t INT = 16;

std::string Numbered(const char* stem, uint32_t number) {
    return stem + std::to_string(number);
}

// Code of one segment at 0, so that module ranges are worked out.
ObjectFile WithCode(ObjectFile file) {
    file.segments = Segment(1, Memory::CODE, "TEXT", 0, 0x1000);
    file.data = UseSegment(1) + Load(Times(16, {0x90}));
    file.trailer = BracketTrailer(0);
    return file;
}

// Every tenth definition is a pointer to the type five places further on; structs and arrays
// between.
TypeDef NumberedType(uint32_t i, uint32_t per_block) {
    const uint32_t further = FIRST_TYPE + (i + 5) % per_block;
    const uint32_t before = FIRST_TYPE + i / 2;
    if (i % 10 == 3) return def::SmallPointer(further);
    if (i % 10 == 7) return def::Struct(4, {{"a", INT, 0}, {"b", INT, 2}});
    return i % 2 == 0 ? def::SmallPointer(INT)
                      : def::Array(before == FIRST_TYPE + i ? INT : before, 3);
}

// ---- The modules of the mixed program ------------------------------------------------------

constexpr uint32_t FUNCTIONS = 12;       // of a module
constexpr uint32_t FUNCTION_SIZE = 256;  // in bytes of code
constexpr uint32_t MODULE_SIZE = FUNCTIONS * FUNCTION_SIZE;
constexpr uint32_t LINES_A_FUNCTION = 16;
constexpr uint32_t VARIABLES = 8;  // of a module, static and global ones each
constexpr uint32_t FUNCTION_TYPE = FIRST_TYPE;

Bytes MixedTypes(Indexes& index) {
    uint32_t type = FUNCTION_TYPE;
    Bytes types = NamedType(index(), "handler", type++, def::Function({.returns = INT}));
    types += NamedType(index(), "sensor_t", type++,
                       def::Struct(12, {{"raw_value", INT, 0},
                                        {"filtered", INT, 2},
                                        {"limit_low", INT, 4},
                                        {"limit_high", INT, 6},
                                        {"error_count", INT, 8},
                                        {"state", INT, 10}}));
    types += NamedType(index(), "sensor_p", type, def::SmallPointer(type - 1));
    types += NamedType(index(), "sensors", type + 1, def::Array(type - 1, 15));
    types += NamedType(index(), "gear_t", type + 2,
                       def::Enum({{"gear_park", 0}, {"gear_reverse", 1}, {"gear_drive", 2}}));
    types += NamedType(
        index(), "flags_t", type + 3,
        def::Struct(2, {{"valid", def::Bitfield(0, 1), 0}, {"channel", def::Bitfield(0, 5), 1}}));
    return types;
}

Bytes MixedFunction(Indexes& index, uint32_t module, uint32_t number) {
    const uint32_t begin = module * MODULE_SIZE + number * FUNCTION_SIZE;
    Bytes body;
    for (const char* name : {"result", "counter", "channel_index"}) {
        const uint32_t i = index();
        body += AutoVariable(i, name, INT, 4 * number);
        body += Lifetime(i, begin + 16, begin + 63, 1, 4 * number) +
                Lifetime(i, begin + 64, begin + 127, 2, number % 16);
    }
    const uint32_t i = index();
    body += Bb6({.begin = begin + 32,
                 .end = begin + 95,
                 .body = AutoVariable(i, "scratch", FIRST_TYPE + 2, 2) +
                         Lifetime(i, begin + 32, begin + 95, 1, 2)});
    return Bb4({.name = "function_" + std::to_string(module) + "_" + std::to_string(number),
                .type = FUNCTION_TYPE,
                .begin = begin,
                .end = begin + FUNCTION_SIZE - 1,
                .body = body});
}

Bytes MixedVariables(Indexes& index, uint32_t module) {
    Bytes variables;
    for (uint32_t i = 0; i < VARIABLES; ++i) {
        const uint32_t number = module * VARIABLES + i;
        variables += StaticVariable(index(), Numbered("state_", i), FIRST_TYPE + 1 + i % 5,
                                    0x800000 + 32 * number, 2);
        variables +=
            GlobalVariable(index(), Numbered("global_", number), INT, 0xC00000 + 2 * number, 2);
    }
    return variables;
}

Bytes MixedLines(uint32_t module) {
    Bytes lines = Nn(0x46, "");
    for (uint32_t i = 0; i < FUNCTIONS * LINES_A_FUNCTION; ++i)
        lines += Line(0x46, 20 + i, module * MODULE_SIZE + i * (FUNCTION_SIZE / LINES_A_FUNCTION));
    return lines;
}

Bytes MixedModule(uint32_t module) {
    Indexes index;
    const std::string name = Numbered("MODULE_", module);
    const Bytes types = MixedTypes(index);
    Bytes scopes;
    for (uint32_t i = 0; i < FUNCTIONS; ++i) scopes += MixedFunction(index, module, i);
    scopes += MixedVariables(index, module);
    return Bb1(name, types) + Bb3(name, scopes) + Bb5(name + ".c", MixedLines(module));
}

// Half of the public symbols are known from the modules.
Bytes MixedPublics(uint32_t module) {
    Bytes publics;
    for (uint32_t i = module * VARIABLES; i < (module + 1) * VARIABLES; ++i)
        publics += PublicSymbol(32 + i, Numbered("global_", i), INT, 8, 0xC00000 + 2 * i) +
                   PublicSymbol(32 + i, Numbered("_label_", i), 0, 19, 16 * i, 1);
    return publics;
}

Bytes GlobalsModule(uint32_t count) {
    Bytes body;
    for (uint32_t i = 0; i < count; ++i)
        body += GlobalVariable(0x46 + i, Numbered("global_", i), INT, 0x10000 + 2 * i);
    return Bb1("MAIN_C", {}) + Bb3("MAIN_C", body);
}

}  // namespace

Bytes TypesProgram(uint32_t count, uint32_t per_block) {
    Bytes debug;
    for (uint32_t done = 0; done < count; done += per_block) {
        Bytes body;
        for (uint32_t i = 0; i < per_block; ++i)
            body += NamedType(0x46, Numbered("t", i), FIRST_TYPE + i, NumberedType(i, per_block));
        debug += Bb1(Numbered("M", done), body) + Bb3(Numbered("M", done), {});
    }
    return Build(WithCode({.debug = debug}));
}

Bytes SymbolsProgram(uint32_t count) {
    Bytes external;
    for (uint32_t i = 0; i < count; ++i)
        external += PublicSymbol(32 + i, Numbered("_public_", i), 15, 19, 0x20000 + i, 1);
    return Build(WithCode({.external = external + Bytes{0xE1}, .debug = GlobalsModule(count)}));
}

Bytes AsmSymbolsProgram(uint32_t count) {
    Bytes body;
    Bytes external;
    for (uint32_t i = 0; i < count; ++i) {
        const std::string name = Numbered("_label_", i);
        body += AsmSymbol(0x46 + i, name, 15, 0, 2, 1);
        external += PublicSymbol(32 + i, name, 15, 19, 0x20000 + i, 1);
    }
    return Build(WithCode({.external = external + Bytes{0xE1}, .debug = Bb10("START", body)}));
}

Bytes StackPointsProgram(uint32_t count) {
    Bytes functions;
    Bytes points = Nn(0x46, "");
    for (uint32_t i = 0; i < count / 2; ++i) {
        const uint32_t address = 0x1000 + 16 * i;
        functions += Bb4(
            {.name = Numbered("f", i), .type = FIRST_TYPE, .begin = address, .end = address + 15});
        points += StackPoint(0x46, address + 2, 4) + StackPoint(0x46, address + 8, 0);
    }
    const Bytes types = NamedType(0x46, "f", FIRST_TYPE, def::Function({.returns = 0}));
    return Build(WithCode(
        {.debug = Bb1("MAIN_C", types) + Bb3("MAIN_C", functions) + Bb5("main.c", points)}));
}

Bytes LinesProgram(uint32_t count, bool interleaved) {
    constexpr uint32_t MODULES = 200;
    const uint32_t per_module = count / MODULES;
    Bytes debug;
    for (uint32_t module = 0; module < MODULES; ++module) {
        Bytes lines = Nn(0x46, "");
        for (uint32_t i = 0; i < per_module; ++i) {
            const uint32_t place =
                interleaved ? i * MODULES + module : module * per_module + (i ^ 3);
            lines += Line(0x46, 1 + i % 1500, 4 * place);
        }
        const std::string name = Numbered("M", module);
        debug += Bb1(name, {}) + Bb3(name, {}) + Bb5(name + ".c", lines);
    }
    return Build(WithCode({.debug = debug}));
}

Bytes BlocksProgram(uint32_t count) {
    constexpr uint32_t MODULES = 50;
    Bytes debug;
    for (uint32_t module = 0; module < MODULES; ++module) {
        Bytes functions;
        for (uint32_t i = module; i < count; i += MODULES)
            functions += Bb4({.name = Numbered("f", i), .begin = 64 * i, .end = 64 * i + 63});
        const std::string name = Numbered("M", module);
        debug += Bb1(name, {}) + Bb3(name, functions);
    }
    return Build(WithCode({.debug = debug}));
}

Bytes CodeProgram(uint32_t size) {
    constexpr uint32_t PIECE = 0x10000;
    Bytes piece;
    for (uint32_t i = 0; i < PIECE; ++i) piece += Bytes{static_cast<uint8_t>(i * 7 >> 3)};
    Bytes data = UseSegment(1);
    for (uint32_t done = 0; done < size; done += PIECE) data += Load(piece);
    return Build({.segments = Segment(1, Memory::CODE, "TEXT", 0, size), .data = data});
}

Bytes MixedProgram(uint32_t count) {
    Bytes debug;
    Bytes external;
    Bytes data = UseSegment(1);
    Bytes code;
    for (uint32_t i = 0; i < MODULE_SIZE; ++i) code += Bytes{static_cast<uint8_t>(i * 7 >> 3)};
    for (uint32_t module = 0; module < count; ++module) {
        debug += MixedModule(module);
        external += MixedPublics(module);
        data += LoadAt(1, module * MODULE_SIZE) + Load(code);
    }
    return Build({.processor = "296sa_e",
                  .segments = Segment(1, Memory::CODE, "TEXT", 0, count * MODULE_SIZE),
                  .external = external + Bytes{0xE1},
                  .debug = debug,
                  .data = data,
                  .trailer = Trailer(0)});
}

}  // namespace scan695::bench
