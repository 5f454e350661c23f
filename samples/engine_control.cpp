// An engine controller on a TriCore: a block of types for the whole program, C modules with
// floating point, register pairs and parameters, and the environment that a linker leaves.
#include "samples/programs.h"

namespace scan695::samples {

using namespace builder;

namespace {

constexpr uint32_t VOID = 0, CHAR = 2, UCHAR = 3, SHORT = 4, USHORT = 5, FLOAT = 10, DOUBLE = 11,
                   INT = 16, UINT = 17, ULONG = 26;
constexpr uint32_t CONST = 1, VOLATILE = 2;

// Data registers count from 0, address registers from 16.
constexpr uint32_t D(uint32_t number) {
    return number;
}
constexpr uint32_t A(uint32_t number) {
    return 16 + number;
}

// Branches hold half the distance, its high byte first.
Bytes Branch(uint8_t code, uint32_t from, uint32_t to) {
    const uint32_t half = (to - from) >> 1;
    return {code, static_cast<uint8_t>(half >> 16), static_cast<uint8_t>(half),
            static_cast<uint8_t>(half >> 8)};
}

Target TriCore() {
    return {.processor = "TRI",
            .instructions = {{0x02, 0x4F},
                             {0x3B, 0x00, 0x01, 0x40},
                             {0x42, 0xF5},
                             {0x19, 0xF4, 0x08, 0x00},
                             {0x54, 0xF3},
                             {0x59, 0xF4, 0x0C, 0x00},
                             {0x1B, 0x12, 0x00, 0x20},
                             {0xC2, 0x14},
                             {0x4B, 0x54, 0x41, 0x40},
                             {0x6B, 0x04, 0x21, 0x46},
                             {0x82, 0x03},
                             {0x8F, 0x24, 0x00, 0x41},
                             {0xDF, 0x04, 0x06, 0x80},
                             {0x3F, 0x54, 0xFA, 0x7F},
                             {0x40, 0xFC},
                             {0x7B, 0x00, 0x00, 0xFD}},
            .return_instruction = {0x00, 0x90},
            .call = [](uint32_t from, uint32_t to) { return Branch(0x6D, from, to); },
            .jump = [](uint32_t from, uint32_t to) { return Branch(0x1D, from, to); },
            .alignment = 4,
            .code_memory_id = 2,
            .living_registers = true};
}

// Types that belong to no module.
Bytes ProgramTypes() {
    return Bb2("ENGCTL", NamedType(0x22, "real32", 0x100, def::Typedef(FLOAT)) +
                             NamedType(0x23, "bool_t", 0x101,
                                       def::Enum({{"FALSE", 0}, {"TRUE", 1}}, EnumSize(1))) +
                             NamedType(0x24, "span", 0x102,
                                       def::Struct(8, {{"low", FLOAT, 0}, {"high", FLOAT, 4}})) +
                             NamedType(0x25, "span_t", 0x103, def::OtherTypedef(0x102)));
}

Module StartUp() {
    return {.name = "boot/cstart.asm",
            .source = "",
            .code_segment = "text.cstart",
            .kind = Module::ASSEMBLED,
            .functions = {{.name = "cstart",
                           .steps = {{25, 4},
                                     {26, 4},
                                     {27, 4},
                                     {29, 4},
                                     {30, 4},
                                     {31, 4},
                                     {35, 2},
                                     {36, 4},
                                     {37, 2},
                                     {40, 4, "main"},
                                     {41, 4}}},
                          {.name = "trap_hang", .steps = {{50, 4}, {51, 4}}}},
            .labels = {{"set_stacks", "cstart", 3, Numbers(2, 0)},
                       {"copy_data", "cstart", 6, Numbers(2, 0)},
                       {"", "cstart", 8, {}},
                       {"_trap_hang", "trap_hang", 0, Numbers(2, 1)}}};
}

Module Engine() {
    Module m = {.name = "ENGINE_C",
                .source = "src/engine.c",
                .code_segment = "text.engine",
                .headers = {"inc/torque.h", "inc/knock.h"}};
    const uint32_t state = m.Type("engine_state", def::Enum({{"ENGINE_STOP", 0},
                                                             {"ENGINE_CRANK", 1},
                                                             {"ENGINE_IDLE", 2},
                                                             {"ENGINE_LOAD", 3},
                                                             {"ENGINE_LIMP", 7}}));
    const uint32_t flags =
        m.Type("engine_flags", def::Struct(4, {{"synced", def::Bitfield(0, 1), 0},
                                               {"gear", def::Bitfield(0, 4), 1},
                                               {"trim", def::Bitfield(1, 6), 5},
                                               {"warmup", def::Bitfield(0, 9), 11},
                                               {"fault", def::Bitfield(0, 12), 20}}));
    const uint32_t tooth = m.Type("tooth", def::Struct(12, {{"time", ULONG, 0},
                                                            {"period", UINT, 4},
                                                            {"number", UCHAR, 8},
                                                            {"missing", UCHAR, 9},
                                                            {"spare", USHORT, 10}}));
    const uint32_t tooth_pointer = m.Type("", def::LargePointer(def::Qualified(CONST, tooth)));
    const uint32_t handler = m.Type("", def::LargePointer(0x106));
    const uint32_t engine = m.Type("engine", def::Struct(48, {{"state", state, 0},
                                                              {"flags", flags, 4},
                                                              {"speed", FLOAT, 8},
                                                              {"position", DOUBLE, 16},
                                                              {"last", tooth_pointer, 24},
                                                              {"on_tooth", handler, 28},
                                                              {"load", def::Array(SHORT, 7), 32}}));
    const uint32_t on_tooth =
        m.Type("", def::Function({.returns = INT, .parameters = {tooth_pointer, UINT}}));
    const uint32_t run = m.Type("", def::Function({}));
    const uint32_t timer = m.Type("", def::Qualified(VOLATILE, UINT));
    const uint32_t filter =
        m.Type("", def::Function({.returns = FLOAT, .parameters = {FLOAT, FLOAT}}));

    m.functions = {
        {.name = "Filter",
         .type = filter,
         .steps = {{31, 4}, {32, 8}, {33, 4}, {34, 4}},
         .locals = {{"old", FLOAT, {{REGISTER, D(4), 0, 2}}, true},
                    {"now", FLOAT, {{REGISTER, D(5), 0, 3}}, true},
                    {"mixed", FLOAT, {{REGISTER, D(15), 1, 3}, {REGISTER, D(2), 3, Home::END}}}},
         .is_static = true},
        {.name = "OnTooth",
         .type = on_tooth,
         .stack = 16,
         .steps = {{44, 4, "", 16},
                   {46, 8},
                   {47, 6},
                   {48, 4},
                   {51, 8},
                   {52, 10, "Filter"},
                   {54, 8},
                   {55, 4},
                   {51, 6},
                   {58, 8, "TorqueStep"},
                   {60, 4, "", 0},
                   {61, 2}},
         .locals = {{"t", tooth_pointer, {{REGISTER, A(4), 0, 4}, {REGISTER, A(12), 4, 10}}, true},
                    {"angle",
                     UINT,
                     {{REGISTER, D(4), 0, 1}, {STACK, 12, 1, 7}, {REGISTER, D(8), 7, 10}},
                     true},
                    {"result", INT, {{REGISTER, D(9), 3, 11}, {REGISTER, D(2), 11, Home::END}}}},
         .inner = {{4,
                    9,
                    16,
                    {{"ratio", DOUBLE, {{STACK, 0, 5, 8}}},
                     {"i", INT, {{REGISTER, D(10), 4, 6}, {REGISTER, D(10), 6, 9}}}}},
                   {9, 10, 8, {{"limit", FLOAT, {{STACK, 4}}}}}}},
        {.name = "main",
         .type = run,
         .stack = 8,
         .steps = {{70, 4, "", 8},
                   {71, 8, "KnockInit"},
                   {72, 10},
                   {75, 6},
                   {76, 8, "KnockLevel"},
                   {77, 12},
                   {74, 6},
                   {80, 4, "", 0}},
         .locals = {{"idle", ULONG, {{STACK, 4, 2, 5}, {REGISTER, D(11), 5, 7}}},
                    {"cold", CHAR, {{REGISTER, D(12), 3, Home::OPEN}}}}}};
    m.variables = {{"engine", engine, 48, "bss.engine"},
                   {"teeth", m.Type("", def::Array(tooth, 3)), 48, "bss.engine"},
                   {"timer_low", timer, 4, "bss.engine"},
                   {"speed_limit", FLOAT, 4, "data.engine", Hex("00 80 D4 45")},
                   {"idle_speed", FLOAT, 4, "data.engine", Hex("00 00 48 44"), true}};
    return m;
}

Module Torque() {
    Module m = {.name = "TORQUE_C",
                .source = "src/torque.c",
                .code_segment = "text.torque",
                .headers = {"inc/torque.h"}};
    const uint32_t split = m.Type("split", def::Union(8, {{"exact", DOUBLE, 0},
                                                          {"words", def::Array(UINT, 1), 0},
                                                          {"bytes", def::Array(UCHAR, 7), 0}}));
    const uint32_t request =
        m.Type("request", def::Struct(16, {{"source", UCHAR, 0},
                                           {"priority", def::Bitfield(0, 3), 8},
                                           {"active", def::Bitfield(0, 1), 11},
                                           {"decay", def::Bitfield(1, 5), 12},
                                           {"wanted", FLOAT, 4},
                                           {"sum", split, 8}}));
    const uint32_t requests = m.Type("", def::Array(request, 2));
    const uint32_t request_pointer = m.Type("", def::LargePointer(request));
    const uint32_t alias = m.Type("request_t", def::Typedef(request));
    const uint32_t step =
        m.Type("", def::Function({.returns = FLOAT, .parameters = {request_pointer}}));
    const uint32_t curve = m.Type("", def::Array(def::Array(SHORT, 3), 3));
    m.functions = {
        {.name = "TorqueStep",
         .type = step,
         .stack = 8,
         .steps = {{22, 4, "", 8},
                   {24, 6},
                   {25, 8},
                   {26, 10},
                   {27, 6},
                   {24, 4},
                   {30, 8},
                   {31, 4, "", 0}},
         .locals = {{"r", request_pointer, {{REGISTER, A(4), 0, 2}, {REGISTER, A(15), 2, 6}}, true},
                    {"best", alias, {{STACK, 0}}},
                    {"torque",
                     FLOAT,
                     {{REGISTER, D(8), 1, 4}, {STACK, 4, 4, 6}, {REGISTER, D(2), 6, Home::END}}}}}};
    m.variables = {{"requests", requests, 48, "bss.torque"},
                   {"spare_request", request, 16, "bss.torque", {}, true},
                   {"torque_map", curve, 32, "rodata.torque",
                    Hex("10 00 18 00 22 00 2C 00 14 00 20 00 2E 00 3C 00 1A 00 2A 00 3C 00 4E 00 "
                        "1E 00 32 00 48 00 60 00")}};
    return m;
}

Module Knock() {
    Module m = {.name = "KNOCK_C", .source = "src/knock.c", .code_segment = "text.knock"};
    const uint32_t window = m.Type("window", def::Struct(8, {{"begin", SHORT, 0},
                                                             {"end", SHORT, 2},
                                                             {"gain", UCHAR, 4},
                                                             {"cylinder", CHAR, 5},
                                                             {"reserved", USHORT, 6}}));
    const uint32_t any = m.Type("", def::LargePointer(def::PointerAttribute(3, VOID, 1)));
    const uint32_t level = m.Type("", def::Function({.returns = UINT}));
    const uint32_t run = m.Type("", def::Function({}));
    m.functions = {
        {.name = "KnockInit", .type = run, .steps = {{15, 4}, {16, 8}, {17, 8}, {18, 2}}},
        {.name = "KnockLevel",
         .type = level,
         .stack = 8,
         .steps = {{26, 4, "", 4},
                   {28, 6},
                   {29, 8, "", 8},
                   {30, 6, "", 4},
                   {28, 4},
                   {33, 6},
                   {34, 4, "", 0}},
         .locals = {{"w", m.Type("", def::LargePointer(window)), {{REGISTER, A(2), 1, 5}}},
                    {"energy", UINT, {{REGISTER, D(15), 1, 5}, {REGISTER, D(2), 5, Home::END}}},
                    {"calls", ULONG, {}, false, "knock_calls"}}}};
    m.variables = {{"windows", m.Type("", def::Array(window, 3)), 32, "rodata.knock",
                    Hex("0A 00 3C 00 20 01 00 00 0A 00 3C 00 22 02 00 00 0C 00 40 00 20 03 00 00 "
                        "0A 00 3C 00 21 04 00 00")},
                   {"knock_calls", ULONG, 4, "bss.knock", {}, true, true},
                   {"sensor_context", any, 4, "bss.knock"}};
    return m;
}

}  // namespace

Bytes EngineControl() {
    return Link({.target = TriCore(),
                 .name = "ENGCTL",
                 .segments = {{"text.cstart", Memory::CODE, 0xA0000200},
                              {"text.engine", Memory::CODE},
                              {"text.torque", Memory::CODE},
                              {"text.knock", Memory::CODE},
                              {"rodata.torque", Memory::CONSTANTS, 0xA0001000},
                              {"rodata.knock", Memory::CONSTANTS},
                              {"erased", Memory::CONSTANTS, Segment::BEHIND, {0xFF}, 96},
                              {"bss.engine", Memory::DATA, 0xD0000000},
                              {"bss.torque", Memory::DATA},
                              {"bss.knock", Memory::DATA},
                              {"data.engine", Memory::DATA, 0xD0000400},
                              {"heap", Memory::DATA, Segment::BEHIND, {0xDE, 0xAD, 0xBE, 0xEF}, 24},
                              {"inttab", Memory::CODE, 0xA0000000}},
                 .modules = {StartUp(), Engine(), Torque(), Knock()},
                 .vector_segment = "inttab",
                 .vector_size = 32,
                 .vectors = {{0, 1, "cstart"}, {1, 6, "trap_hang"}, {7, 1, "OnTooth"}},
                 .labels = {{"_START", "cstart", 0, 20}},
                 .more_debug = ProgramTypes(),
                 .ad_attributes = AdAttribute(FORMAT_VERSION, 1, 3) + AdAttribute(FILE_FORMAT, 1) +
                                  AdAttribute(CASE_SENSE, 2),
                 .environment_attributes =
                     EnvAttribute(DATE_TIME, 2004, 11, 3, 16, 42, 10) + EnvAttribute(COMMAND_LINE) +
                     Bytes(Text("-e ENGCTL.lsl")) + EnvAttribute(LINK_STATUS, 0) +
                     EnvAttribute(TOOL_INFO, 1810, 2, 5, 1) + EnvAttribute(COMMENT) +
                     Bytes(Text("release build")),
                 .trailer = Trailer(0xA0000200)});
}

}  // namespace scan695::samples
