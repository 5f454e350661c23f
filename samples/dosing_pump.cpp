// A dosing pump on an 80166: start-up module, main loop, dosing and serial line, and a library.
#include "samples/programs.h"

namespace scan695::samples {

using namespace builder;

namespace {

// Basic types of this compiler.
constexpr uint32_t VOID = 0, CHAR = 2, UCHAR = 3, USHORT = 5, LONG = 6, ULONG = 7, UINT = 0x48,
                   INT = 0x49;

// Register words of symbols and lifetimes.
constexpr uint32_t R(uint32_t number) {
    return 0x1000 | number << 1;
}
constexpr uint32_t RL(uint32_t number) {
    return 0x2000 | number << 1;
}
constexpr uint32_t Pair(uint32_t high, uint32_t low) {
    return 0x4000 | high << 5 | low << 1;
}
// Offsets in a frame are negative.
constexpr uint32_t At(int32_t offset) {
    return static_cast<uint32_t>(offset);
}

Bytes FarBranch(uint8_t code, uint32_t to) {
    return {code, static_cast<uint8_t>(to >> 16), static_cast<uint8_t>(to),
            static_cast<uint8_t>(to >> 8)};
}

Target C166() {
    return {.processor = "80166",
            .instructions = {{0xF0, 0x4C},
                             {0xE6, 0xF8, 0x10, 0x00},
                             {0xA8, 0x4D},
                             {0xD4, 0x5C, 0x06, 0x00},
                             {0x00, 0x45},
                             {0xF2, 0xF4, 0x10, 0xE0},
                             {0x48, 0x41},
                             {0x3D, 0x03},
                             {0xC4, 0x5C, 0x08, 0x00},
                             {0x08, 0xD2},
                             {0x5C, 0x14},
                             {0xF6, 0xF4, 0x12, 0xE0},
                             {0x0B, 0x45},
                             {0x66, 0xF4, 0xFF, 0x00},
                             {0x20, 0x54},
                             {0x2D, 0x05},
                             {0xF3, 0xFC, 0x20, 0xE0},
                             {0xB8, 0x4D}},
            .return_instruction = {0xDB, 0x00},
            .call = [](uint32_t, uint32_t to) { return FarBranch(0xDA, to); },
            .jump = [](uint32_t, uint32_t to) { return FarBranch(0xFA, to); },
            .alignment = 2,
            .code_memory_id = 1};
}

Module StartUp() {
    return {.name = "CSTART_ASM",
            .source = "",
            .code_segment = "CSTART_PR",
            .kind = Module::ASSEMBLED,
            .functions = {{.name = "cstart",
                           .steps = {{41, 4},
                                     {42, 4},
                                     {45, 4},
                                     {46, 2},
                                     {47, 2},
                                     {48, 2},
                                     {51, 4},
                                     {52, 4},
                                     {53, 2},
                                     {54, 2},
                                     {55, 2},
                                     {60, 4, "main"},
                                     {61, 2}}},
                          {.name = "trap", .steps = {{70, 4}, {71, 2}, {72, 2}}}},
            .labels = {{"RESET", "cstart", 0, Numbers(2, 0)},
                       {"CLEAR_LOOP", "cstart", 3, Numbers(2, 0)},
                       {"", "cstart", 8, {}},
                       {"COPY_LOOP", "cstart", 8, Numbers(2, 0)},
                       {"STACK_READY", "cstart", 11, {}},
                       {"_unexpected_trap", "trap", 0, Numbers(2, 1)}}};
}

Module MainLoop() {
    Module m = {.name = "MAIN_C",
                .source = "..\\src\\main.c",
                .code_segment = "MAIN_PR",
                .headers = {"..\\inc\\board.h", "..\\inc\\dosing.h"},
                .compiler_record = true};
    m.Type("bit", def::Bitfield(0, 1));
    m.Type("byte_t", def::Typedef(UCHAR));
    const uint32_t word = m.Type("word_t", def::Typedef(UINT));
    const uint32_t phase = m.Type("phase", def::Enum({{"PHASE_BOOT", 0},
                                                      {"PHASE_PRIME", 1},
                                                      {"PHASE_RUN", 2},
                                                      {"PHASE_PURGE", 3},
                                                      {"PHASE_FAULT", -1}}));
    const auto port_bit = [](const char* name, int bit) {
        return Member{name, def::Bitfield(0, 1), bit};
    };
    const uint32_t port_bits = m.Type(
        "port_bits",
        def::Struct(
            2, {port_bit("motor_on", 0), port_bit("motor_dir", 1), port_bit("valve_in", 2),
                port_bit("valve_out", 3), port_bit("lamp_run", 4), port_bit("lamp_fault", 5),
                port_bit("key_start", 8), port_bit("key_stop", 9), port_bit("level_low", 10)}));
    const uint32_t port = m.Type("port", def::Union(2, {{"all", UINT, 0}, {"bits", port_bits, 0}}));
    const uint32_t void_function = m.Type("", def::Function({.push_mask = 0x340}));
    const uint32_t main_function = m.Type("", def::Function({.returns = INT, .attributes = 0x48}));

    m.functions = {
        {.name = "ReadKeys",
         .type = void_function,
         .steps = {{38, 4}, {40, 6}, {41, 8}, {42, 6}, {44, 4}},
         .locals = {{"pressed", word, {{REGISTER, R(4), 1, 4}}},
                    {"changed", UCHAR, {{REGISTER, RL(6), 2, Home::END}}}},
         .is_static = true},
        {.name = "SystemTick",
         .type = void_function,
         .steps = {{52, 6}, {53, 8}, {54, 6}, {55, 6, "ReadKeys"}, {57, 8}, {58, 4}},
         .locals = {{"beat", UINT, {}, false, "tick_beat"}}},
        {.name = "main",
         .type = main_function,
         .stack = 4,
         .steps = {{70, 4},
                   {71, 0},
                   {72, 6, "SerialOpen", 2},
                   {73, 6, "", 0},
                   {75, 4},
                   {76, 6},
                   {77, 10, "DosingInit", 4},
                   {78, 8, "", 0},
                   {80, 4},
                   {81, 6, "DosingStep"},
                   {82, 8},
                   {83, 6, "SerialStatus", 2},
                   {84, 4, "", 0},
                   {79, 6},
                   {87, 6},
                   {88, 4, "", 0}},
         .locals =
             {{"now",
               phase,
               {{REGISTER, R(12), 3, 9}, {STACK, At(-2), 9, 13}, {REGISTER, R(12), 13, Home::END}}},
              {"faults", INT, {{STACK, At(-4)}}},
              {"deadline",
               ULONG,
               {{REGISTER, Pair(13, 12), 10, 11}, {REGISTER, Pair(9, 8), 11, 14}}}},
         .inner = {{8,
                    13,
                    2,
                    {{"left", UINT, {{STACK, At(-2), 9, 12}}},
                     {"retry", CHAR, {{REGISTER, RL(7), 9, 11}}}}}}}};
    m.variables = {{"board_port", port, 2, "MAIN_NB"},
                   {"tick_beat", UINT, 2, "MAIN_NB", {}, true, true},
                   {"tick_count", ULONG, 4, "MAIN_NB"},
                   {"key_mask", word, 2, "MAIN_ID", Hex("00 07"), true}};
    return m;
}

Module Dosing() {
    Module m = {.name = "DOSING_C",
                .source = "..\\src\\dosing.c",
                .code_segment = "DOSING_PR",
                .headers = {"..\\inc\\dosing.h"}};
    m.Type("bit", def::Bitfield(0, 1));
    const uint32_t mode = m.Type(
        "dose_mode",
        def::Enum({{"DOSE_OFF", 0}, {"DOSE_BATCH", 1}, {"DOSE_CONTINUOUS", 2}, {"DOSE_TEST", 9}},
                  EnumSize(1)));
    const uint32_t status =
        m.Type("dose_status", def::Struct(4, {{"steps", def::Bitfield(0, 12), 0},
                                              {"trim", def::Bitfield(1, 4), 12},
                                              {"empty", def::Bitfield(0, 1), 16},
                                              {"priming", def::Bitfield(0, 1), 17},
                                              {"alarm", def::Bitfield(0, 3), 18}}));
    // A channel links to the next one, so the pointer comes before the struct.
    constexpr uint32_t CHANNEL_NUMBER = 0x104;
    const uint32_t channel_pointer = m.Type("", def::SmallPointer(CHANNEL_NUMBER));
    const uint32_t channel =
        m.Type("channel", def::Struct(28, {{"mode", mode, 0},
                                           {"stroke", UCHAR, 1},
                                           {"status", status, 2},
                                           {"setpoint", UINT, 6},
                                           {"flow", def::Array(INT, 3), 8},
                                           {"total", ULONG, 16},
                                           {"label", def::LargePointer(CHAR), 20},
                                           {"curve", def::SmallPointer(0x106), 22},
                                           {"next", channel_pointer, 24},
                                           {"error", INT, 26}}));
    const uint32_t channel_t = m.Type("channel_t", def::Typedef(channel));
    const uint32_t point =
        m.Type("curve_point", def::Struct(4, {{"volts", UINT, 0}, {"ml", INT, 2}}));
    const uint32_t curve = m.Type("", def::Array(point, 15));
    const uint32_t channels = m.Type("", def::Array(channel_t, 2));
    const uint32_t any = m.Type("", def::SmallPointer(def::PointerAttribute(3, VOID, 1)));
    const uint32_t run = m.Type("", def::Function({}));
    const uint32_t scale = m.Type("", def::Function({.returns = INT, .push_mask = 0x300}));
    const uint32_t hook = m.Type("", def::SmallPointer(run));

    m.functions = {
        {.name = "Interpolate",
         .type = scale,
         .stack = 2,
         .steps = {{61, 4, "", 2},
                   {64, 4},
                   {65, 8},
                   {66, 6},
                   {64, 6},
                   {69, 10},
                   {70, 8, "_mul_long"},
                   {71, 6},
                   {72, 4, "", 0}},
         .locals = {{"volts", UINT, {{REGISTER, R(12), 0, 6}}, true},
                    {"curve_at",
                     m.Type("", def::SmallPointer(point)),
                     {{REGISTER, R(13), 0, 3}, {REGISTER, R(14), 3, Home::END}},
                     true},
                    {"i", INT, {{REGISTER, R(4), 1, 3}, {REGISTER, R(4), 3, 5}}},
                    {"product",
                     LONG,
                     {{REGISTER, Pair(5, 4), 6, 7}, {REGISTER, Pair(11, 10), 7, Home::OPEN}}}},
         .is_static = true},
        {.name = "DosingInit",
         .type = run,
         .steps = {{80, 4}, {82, 4}, {83, 10}, {84, 8}, {85, 8}, {82, 6}, {87, 6}, {88, 2}},
         .locals = {{"c", channel_pointer, {{REGISTER, R(15), 1, 7}}},
                    {"n", UCHAR, {{REGISTER, RL(3), 1, 6}}}}},
        {.name = "DosingSetMode",
         .type = run,
         .stack = 4,
         .steps = {{95, 4, "", 4},
                   {97, 8},
                   {98, 12},
                   {101, 6},
                   {102, 10, "", 6},
                   {103, 6, "", 4},
                   {105, 4, "", 0}},
         .locals = {{"c",
                     channel_pointer,
                     {{REGISTER, R(12), 0, 3}, {STACK, At(-2), 3, Home::END}},
                     true},
                    {"wanted", mode, {{REGISTER, RL(5), 0, 2}, {REGISTER, RL(6), 2, 5}}, true},
                    {"saved", status, {{STACK, At(-4)}}}}},
        {.name = "DosingStep",
         .type = run,
         .stack = 6,
         .steps = {{118, 6, "", 2},
                   {121, 4},
                   {122, 8},
                   {123, 12, "Interpolate"},
                   {124, 10},
                   {126, 8},
                   {127, 6},
                   {129, 12},
                   {130, 10, "_div_long"},
                   {131, 8},
                   {121, 6},
                   {134, 8},
                   {135, 6, "", 0}},
         .locals = {{"c", channel_pointer, {{REGISTER, R(14), 1, 11}}},
                    {"sum",
                     LONG,
                     {{REGISTER, Pair(9, 8), 1, 6},
                      {STACK, At(-6), 6, 9},
                      {REGISTER, Pair(9, 8), 9, 12}}},
                    {"report", hook, {{STACK, At(-2), 4, Home::END}}}},
         .inner = {{5,
                    10,
                    4,
                    {{"ml", INT, {{REGISTER, R(11), 5, 8}, {REGISTER, R(10), 8, 10}}},
                     {"limit", UINT, {{STACK, At(-4), 6, 9}}}}}}}};
    m.variables = {{"channels", channels, 84, "DOSING_NB"},
                   {"on_report", hook, 2, "DOSING_NB"},
                   {"scratch", any, 2, "DOSING_NB", {}, true},
                   {"active", channel_pointer, 2, "DOSING_ID", Hex("40 E0")},
                   {"trim_default", INT, 2, "DOSING_ID", Hex("FC FF"), true}};
    Bytes points;
    for (int i = 0; i < 16; ++i) {
        const int ml = i * i * 7 / 2 - 12;
        points += {static_cast<uint8_t>(i * 64), static_cast<uint8_t>(i / 4),
                   static_cast<uint8_t>(ml), static_cast<uint8_t>(ml >> 8)};
    }
    m.variables.push_back({"flow_curve", curve, 64, "DOSING_CO", points});
    m.variables.push_back({"channel_names", m.Type("", def::Array(def::Array(CHAR, 7), 2)), 24,
                           "DOSING_CO",
                           Hex("'acid' 00 00 00 00 'lye' 00 00 00 00 00 'flush' 00 00 00")});
    return m;
}

Module Serial() {
    Module m = {.name = "SERIAL_C", .source = "..\\src\\serial.c", .code_segment = "SERIAL_PR"};
    m.Type("bit", def::Bitfield(0, 1));
    const uint32_t text = m.Type("", def::LargePointer(CHAR));
    const uint32_t ring = m.Type("ring", def::Struct(36, {{"head", UCHAR, 0},
                                                          {"tail", UCHAR, 1},
                                                          {"overrun", USHORT, 2},
                                                          {"data", def::Array(UCHAR, 31), 4}}));
    const uint32_t run = m.Type("", def::Function({.push_mask = 0x40}));
    const uint32_t put = m.Type("", def::Function({.returns = INT}));
    const uint32_t ring_pointer = m.Type("", def::SmallPointer(ring));

    m.functions = {
        {.name = "SerialOpen",
         .type = run,
         .steps = {{24, 4}, {25, 4}, {26, 8}, {27, 8}, {29, 6}, {30, 2}}},
        {.name = "PutByte",
         .type = put,
         .steps = {{38, 4}, {39, 6}, {40, 6}, {39, 4}, {42, 8}, {43, 6}, {45, 4}},
         .locals = {{"r", ring_pointer, {{REGISTER, R(12), 0, Home::END}}, true},
                    {"byte", UCHAR, {{REGISTER, RL(6), 0, 5}}, true},
                    {"next", UCHAR, {{REGISTER, RL(4), 1, 3}, {REGISTER, RL(4), 3, 6}}}},
         .is_static = true},
        {.name = "SerialText",
         .type = run,
         .stack = 2,
         .steps = {{52, 4, "", 2}, {53, 4}, {54, 8, "PutByte"}, {53, 6}, {56, 4, "", 0}},
         .locals =
             {{"p", text, {{REGISTER, Pair(13, 12), 0, 2}, {REGISTER, Pair(15, 14), 2, 4}}, true}}},
        {.name = "SerialStatus",
         .type = run,
         .stack = 8,
         .steps = {{63, 4, "", 8},
                   {65, 10, "_div_long"},
                   {66, 8},
                   {67, 4},
                   {65, 6},
                   {70, 8, "SerialText"},
                   {71, 4, "", 0}},
         .locals = {{"digits", m.Type("", def::Array(CHAR, 5)), {{STACK, At(-8)}}},
                    {"value", ULONG, {{REGISTER, Pair(5, 4), 0, 3}, {STACK, At(-2), 3, 5}}},
                    {"n", INT, {{REGISTER, R(8), 1, 5}}}}},
        {.name = "ReceiveInterrupt",
         .type = run,
         .steps = {{80, 6}, {81, 6}, {82, 8, "PutByte"}, {84, 6}, {86, 2}}}};
    m.variables = {{"receive_ring", ring, 36, "SERIAL_NB"},
                   {"send_ring", ring, 36, "SERIAL_NB"},
                   {"line_errors", UINT, 2, "SERIAL_NB"},
                   {"hex_digits", m.Type("", def::Array(CHAR, 16)), 17, "SERIAL_CO",
                    Hex("'0123456789ABCDEF' 00"), true},
                   {"greeting", m.Type("", def::Array(CHAR, 23)), 24, "SERIAL_CO",
                    Hex("'DOSING PUMP V2.31 ready' 00")}};
    return m;
}

Module Library() {
    return {.name = "RTLIB",
            .source = "",
            .code_segment = "RTLIB_PR",
            .kind = Module::LIBRARY,
            .functions = {{.name = "_mul_long", .steps = {{0, 26}}},
                          {.name = "_div_long", .steps = {{0, 58}}}}};
}

}  // namespace

Bytes DosingPump() {
    Program program = {
        .target = C166(),
        .name = "DOSIPUMP",
        .segments = {{"CSTART_PR", Memory::CODE, 0x200},
                     {"MAIN_PR", Memory::CODE},
                     {"DOSING_PR", Memory::CODE},
                     {"SERIAL_PR", Memory::CODE},
                     {"RTLIB_PR", Memory::CODE},
                     {"DOSING_CO", Memory::CONSTANTS, 0x1000},
                     {"SERIAL_CO", Memory::CONSTANTS},
                     {"MAIN_NB", Memory::DATA, 0xE000},
                     {"DOSING_NB", Memory::DATA, 0xE040},
                     {"SERIAL_NB", Memory::DATA},
                     {"MAIN_ID", Memory::DATA, 0xE100},
                     {"DOSING_ID", Memory::DATA},
                     {"C_CLEAR", Memory::DATA, Segment::BEHIND, {0x00}, 48},
                     {"SHARED", Memory::DATA, 0x20000, {0x55, 0xAA, 0xFF, 0x00}, 16},
                     {"VECTORS", Memory::CODE, 0}},
        .modules = {StartUp(), MainLoop(), Dosing(), Serial(), Library()},
        .vector_segment = "VECTORS",
        .vectors = {{0, 1, "cstart"},
                    {1, 23, "trap"},
                    {0x22, 1, "SystemTick"},
                    {0x2B, 1, "ReceiveInterrupt"}},
        .labels = {{"__CSTART_TASK", "cstart", 0, 19}},
        .ad_attributes = AdAttribute(FILE_FORMAT, 1) + AdAttribute(CASE_SENSE, 2),
        .environment_attributes = EnvAttribute(HOST, 2) + EnvAttribute(TOOL_INFO, 408, 8, 7),
        .trailer = BracketTrailer(0)};
    // Public constants carry three numbers behind the attribute, and readers leave off there.
    program.more_public = Hex("E8 70 n'_SYSTEM_STACK' F1 C9 70 00 10 00 01 02 E2 C9 70 82 02 00");
    return Link(program);
}

}  // namespace scan695::samples
