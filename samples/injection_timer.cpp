// An injection timer on a 296sa_e: start-up module, two C modules, trailer without brackets.
#include "samples/programs.h"

namespace scan695::samples {

using namespace builder;

namespace {

constexpr uint32_t VOID = 0, CHAR = 2, UCHAR = 3, USHORT = 5, ULONG = 7, FLOAT = 10, INT = 16,
                   UINT = 17;

Bytes LowFirst(uint8_t code, uint32_t value) {
    return {code, static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)};
}

Target Model296() {
    return {.processor = "296sa_e",
            .instructions = {{0xFD},
                             {0xA0, 0x1C, 0x24},
                             {0xA1, 0x40, 0x00, 0x1C},
                             {0x64, 0x24, 0x1C},
                             {0x68, 0x26, 0x1C},
                             {0x07, 0x1C},
                             {0xA3, 0x25, 0x04, 0x1C},
                             {0x88, 0x28, 0x1C},
                             {0xD7, 0x04},
                             {0xC3, 0x25, 0x06, 0x1C},
                             {0x6C, 0x2A, 0x1C},
                             {0x08, 0x03, 0x1C},
                             {0xB0, 0x30, 0x32},
                             {0x61, 0xFF, 0x00, 0x1C},
                             {0xDF, 0x06}},
            .return_instruction = {0xF0},
            .call = [](uint32_t from, uint32_t to) { return LowFirst(0xEF, to - from - 3); },
            .jump =
                [](uint32_t, uint32_t to) {
                    return Bytes{static_cast<uint8_t>(to), static_cast<uint8_t>(to >> 8)};
                },
            .alignment = 2,
            .code_memory_id = 2};
}

Module StartUp() {
    return {.name = "START_ASM",
            .source = "",
            .code_segment = "START_CODE",
            .kind = Module::ASSEMBLED,
            .functions = {{.name = "start",
                           .steps = {{18, 1},
                                     {19, 4},
                                     {20, 4},
                                     {22, 4},
                                     {23, 3},
                                     {24, 2},
                                     {25, 2},
                                     {30, 3, "main"},
                                     {31, 2}}},
                          {.name = "stray", .steps = {{36, 1}, {37, 3}}}},
            .labels = {{"CLEAR_REGISTERS", "start", 4, Numbers(2, 0)},
                       {"_stray_interrupt", "stray", 0, Numbers(2, 1)}}};
}

Module Injection() {
    Module m = {.name = "INJECT_C",
                .source = "C:\\INJTIMER\\INJECT.C",
                .code_segment = "INJECT_CODE",
                .headers = {"C:\\INJTIMER\\SENSOR.H"}};
    const uint32_t flags =
        m.Type("cylinder_flags", def::Struct(3, {{"enabled", def::Bitfield(0, 1), 0},
                                                 {"bank", def::Bitfield(0, 3), 1},
                                                 {"offset", def::Bitfield(1, 12), 4},
                                                 {"misfires", def::Bitfield(0, 6), 16}}));
    const uint32_t state =
        m.Type("state", def::Enum({{"CRANKING", 1}, {"RUNNING", 2}, {"OVERRUN", 4}}, EnumSize(2)));
    const uint32_t cylinder =
        m.Type("cylinder", def::Struct(14, {{"flags", flags, 0},
                                            {"spare", CHAR, 3},
                                            {"open_angle", UINT, 4},
                                            {"pulse", UINT, 6},
                                            {"table", def::LargePointer(USHORT), 8},
                                            {"next", def::SmallPointer(0x102), 12}}));
    const uint32_t bank = m.Type("", def::Array(cylinder, 3));
    const uint32_t run = m.Type("", def::Function({}));
    const uint32_t pulse =
        m.Type("", def::Function({.returns = UINT, .parameters = {state, UINT}}));
    const uint32_t cylinder_pointer = m.Type("", def::SmallPointer(cylinder));
    const uint32_t port = m.Type("", def::Qualified(2, UCHAR));

    m.functions = {
        {.name = "PulseWidth",
         .type = pulse,
         .stack = 6,
         .steps = {{33, 4, "", 2},
                   {35, 7},
                   {36, 9, "LoadFactor", 4},
                   {37, 5, "", 2},
                   {38, 11},
                   {40, 8},
                   {41, 5, "", 0}},
         .locals = {{"now", state, {{STACK, 6}}, true},
                    {"load", UINT, {{STACK, 4, 0, 1}, {REGISTER, 0x1C, 1, 5}}, true},
                    {"width",
                     ULONG,
                     {{REGISTER, 0x24, 3, 5}, {STACK, 0, 5, 6}, {REGISTER, 0x1C, 6, Home::END}}}},
         .is_static = true},
        {.name = "Schedule",
         .type = run,
         .stack = 4,
         .steps = {{52, 3, "", 2},
                   {54, 4},
                   {55, 9, "PulseWidth", 6},
                   {56, 10, "", 2},
                   {57, 7},
                   {54, 5},
                   {59, 4, "", 0}},
         .locals = {{"c", cylinder_pointer, {{REGISTER, 0x26, 1, 6}}},
                    {"count", UCHAR, {{REGISTER, 0x30, 1, 6}}}},
         .inner = {{2, 5, 2, {{"width", UINT, {{REGISTER, 0x1C, 3, 4}, {REGISTER, 0x28, 4, 5}}}}}}},
        {.name = "main",
         .type = run,
         .steps = {{70, 3},
                   {71, 6, "SensorInit"},
                   {73, 4},
                   {74, 3, "LoadFactor"},
                   {75, 6, "LoadFactor"},
                   {76, 2},
                   {73, 3},
                   {78, 1}},
         .locals = {{"turns", UINT, {{REGISTER, 0x2A, 2, Home::END}}}}}};
    m.variables = {{"bank_a", bank, 56, "INJECT_DATA"},
                   {"engine_state", state, 2, "INJECT_DATA"},
                   {"injector_port", port, 1, "INJECT_DATA"},
                   {"last_angle", UINT, 2, "INJECT_DATA", {}, true},
                   {"pulse_table", m.Type("", def::Array(USHORT, 7)), 16, "INJECT_CONST",
                    Hex("40 06 20 08 00 0A E0 0B C0 0D A0 0F 80 11 60 13")}};
    return m;
}

Module Sensors() {
    Module m = {
        .name = "SENSOR_C", .source = "C:\\INJTIMER\\SENSOR.C", .code_segment = "SENSOR_CODE"};
    const uint32_t reading =
        m.Type("reading", def::Union(4, {{"raw", def::Array(UINT, 1), 0}, {"scaled", FLOAT, 0}}));
    const uint32_t run = m.Type("", def::Function({}));
    const uint32_t load = m.Type("", def::Function({.returns = UINT}));
    const uint32_t any = m.Type("", def::LargePointer(def::PointerAttribute(3, VOID, 1)));
    m.functions = {
        {.name = "SensorInit", .type = run, .steps = {{14, 4}, {15, 6}, {16, 4}, {17, 1}}},
        {.name = "LoadFactor",
         .type = load,
         .stack = 4,
         .steps = {{25, 3, "", 4}, {26, 7}, {27, 6}, {28, 8}, {30, 4, "", 0}},
         .locals = {{"pressure", reading, {{STACK, 0}}},
                    {"samples", INT, {{REGISTER, 0x1C, 1, 3}, {REGISTER, 0x2C, 3, 4}}},
                    {"history", m.Type("", def::Array(UINT, 15)), {}, false, "history"}}}};
    m.variables = {{"history", m.Type("", def::Array(UINT, 15)), 32, "SENSOR_DATA", {}, true, true},
                   {"adc_result", reading, 4, "SENSOR_DATA"},
                   {"scratch_area", any, 4, "SENSOR_DATA", {}, true}};
    return m;
}

}  // namespace

Bytes InjectionTimer() {
    return Link({.target = Model296(),
                 .name = "INJTIMER",
                 .segments = {{"START_CODE", Memory::CODE, 0xFF2080},
                              {"INJECT_CODE", Memory::CODE},
                              {"SENSOR_CODE", Memory::CODE},
                              {"INJECT_CONST", Memory::CONSTANTS, 0xFF2400},
                              {"FILL", Memory::CONSTANTS, Segment::BEHIND, {0xFF}, 112},
                              {"INJECT_DATA", Memory::DATA, 0x400},
                              {"SENSOR_DATA", Memory::DATA},
                              {"RESERVED", Memory::NONE, 0xFF2018, {0x20}, 8},
                              {"VECTORS", Memory::CODE, 0xFF2000}},
                 .modules = {StartUp(), Injection(), Sensors()},
                 .vector_segment = "VECTORS",
                 .vector_size = 2,
                 .vectors = {{0, 4, "stray"}, {4, 1, "Schedule"}, {5, 1, "stray"}, {7, 1, "stray"}},
                 .labels = {{"_START", "start", 0, 20}},
                 .ad_attributes = AdAttribute(FORMAT_VERSION, 1, 2) + AdAttribute(FILE_FORMAT, 1),
                 .environment_attributes = EnvAttribute(LINK_STATUS, 1) + EnvAttribute(HOST, 2),
                 .trailer = Trailer(0xFF2080)});
}

}  // namespace scan695::samples
