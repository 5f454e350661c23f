#include "tests/faults/fatal_cases.h"

#include <cstdio>

namespace scan695::test {

namespace {

constexpr const char* UPPER = "%X\n";
constexpr const char* NONE = "";

const std::string UNEXPECTED = "Unexpected record at ";
const std::string FUNCTION = "Invalid function type encountered at ";

Bytes operator+(const Bytes& left, const char* hex) {
    return left + Hex(hex);
}

// Heads of blocks, up to where a fault comes.
const Bytes TYPES = Hex("F8 01 00 n'M' F0 46 n'T'");
const Bytes TYPE = TYPES + "F2 82 01 00 CE 46";
const Bytes SCOPE = Hex("F8 01 00 n'M' F9 F8 03 00 n'M'");
const Bytes SYMBOL = SCOPE + "F0 46 n'v' F1 CE 46 10";
const Bytes MARK = Hex("F0 46 00 F1 CE 46 00 3F 46 03 E2 CE 46 10 E2 CE 46 00 E2 CE 46 05");
const Bytes ASM = Hex("F8 0A 00 n'A' 00 00 00 00 00 00 00 00 00");
const Bytes LINES = Hex("F8 05 00 n's.c' F0 46 00");
const Bytes PUBLIC = Hex("E8 20 n'a' F1 C9 20 10 13");

std::vector<FatalCase> TypeCases() {
    std::vector<FatalCase> cases = {
        {"Unexpected type ident at ", TYPES + "F2 82 01 00 CE 47"},
        {"Unrecognized compound type at ", TYPES + "F2 81 FF CE 46", {5}, Part::DEBUG, UPPER},
        {UNEXPECTED, TYPES + "F2 82 01 00 CF", {5}},
        {UNEXPECTED, TYPES + "F2", {0xCE}},
        {UNEXPECTED, TYPES + "F3"},
        {UNEXPECTED, TYPES + "E5"},
        {"Error: not enough memory\n", TYPE + "'x' 08 00 00 05 83 10 FF FF", {}, Part::DEBUG, NONE},
        {"Unexpected end of file at ", TYPE + "'N'", {}, Part::DEBUG, "%x\n", 1},
    };
    const struct {
        std::string message;
        const char* bytes;
    } definitions[] = {
        {"Cannot scan type index at ", ""},
        {FUNCTION, "'x'"},
        {FUNCTION, "'x' 00 00"},
        {FUNCTION, "'x' 00 00 00 05"},
        {FUNCTION, "'x' 00 00 00 05 00"},
        {"Invalid C array type encountered at ", "'Z' 05"},
        {"Invalid N qualifier encountered at ", "'n'"},
        {"Invalid pointer type encountered at ", "'n' 03 00"},
        {"Invalid Q qualifier encountered at ", "'Q'"},
        {"Invalid struct type encountered at ", "'S'"},
        {"Invalid struct type encountered at ", "'U'"},
        {"Invalid 'T' typedef encountered at ", "'T'"},
        {"Invalid 't' typedef encountered at ", "'t'"},
        {"Invalid bitfield type encountered at ", "'g' 00"},
    };
    for (const auto& c : definitions)
        cases.push_back({c.message, TYPE + c.bytes, {0xF9}, Part::DEBUG, UPPER});
    return cases;
}

const std::vector<FatalCase> SCOPE_CASES = {
    {UNEXPECTED, Hex("F8 07"), {}},
    {UNEXPECTED, Hex("F8 01"), {0xF9}},
    {UNEXPECTED, Hex("F8 01 00 n'M' F9 F8 03 00 n'm'")},
    {"Unexpected record=e0 at ", SCOPE + "E0"},
    {UNEXPECTED, SCOPE + "F8 05"},
    {"Unexpected record=0 at ", SCOPE + "F8 04 00 n'f'"},
    {UNEXPECTED, SCOPE + "F8 06 00 n'f' 00 00 00 F8 04"},
    {"Unexpected record=e0 at ", ASM + "E0"},
    {UNEXPECTED, ASM + "F8 04"},
    {UNEXPECTED, SYMBOL + "14"},
    {UNEXPECTED, SYMBOL + "01"},
    {UNEXPECTED, SYMBOL + "03 00 E2 CE 47"},
    {UNEXPECTED, SYMBOL + "01 00 F1 CE 46 00 3E"},
    {"ASN:Unexpected record at ", SYMBOL + "03 00 E2 CF"},
    {"Unrecognized value at ", SYMBOL + "03 00 E2 CE 46"},
    {"Not ASN record = f9 at ", SYMBOL + "3E 32 01 F9", {0, 0}, Part::DEBUG, "%x\n", 1},
    {"CvtTkStorageClass: unknown storage class encountered at ",
     SYMBOL + "01 00" + MARK,
     {0xF9, 0xF9}},
    {"Unexpected misc record=34, num=2 at ", LINES + "F1 CE 46 00 40 34 02"},
    {"Unexpected record=e0 at ", LINES + "E0"},
    {UNEXPECTED, LINES + "F1 CE 46 00 08"},
    {UNEXPECTED, LINES + "F8 04"},
    {UNEXPECTED, Hex("F8 0A 00 n'a.c' 00 00 00 00 00 00 00 00 00 F9 F8 03 00 n'a.c'")},
    {UNEXPECTED, SCOPE + "F0"},
    {UNEXPECTED, SCOPE + "F0 46 n'v' E2 CE", {0x46}},
    {UNEXPECTED, SCOPE + "F0 46 n'v' F1 CE 47"},
    {UNEXPECTED, Hex("F8 01 00 n'm.c' F9 F8 03 00 n'm.c' F0 46 n'v' F1 CE 46 10 07"), {1}},
    {UNEXPECTED, SYMBOL + "01 04 F1 C9", {0x46}},
    {UNEXPECTED, SYMBOL + "01 04 F1 CE 47"},
    {"Unexpected record=e2 at ", SYMBOL + "01 04 F1 CE 46 00 3F 3B 01 E2"},
    {"ASN:Unexpected record at ",
     SYMBOL + "01 04 F1 CE 46 00 3F 46 02 E2 CE 46 05 E2 CE 46 01 F9 00"},
    {UNEXPECTED, SCOPE + "F8 04"},
    {UNEXPECTED, SCOPE + "F8 04 05 n'f' 00"},
    {UNEXPECTED, SCOPE + "F8 04 05 n'f' 00 10 10 F9", {0xF9, 0xF9}},
    {UNEXPECTED, SCOPE + "F8 04 05 n'f' 00 10 10 E2", {0xF9, 0, 0}},
    {"Unexpected record=e2 at ", LINES + "F1 CE 46 00 40 33 04 E2 CE 46 01 E2 CE 46 02 E2"},
    {"ASN:Unexpected record at ", LINES + "F1 CE 46 00 07 01 00 F9 00"},
    {"Nesting too deep at ", TYPE + Times(1000, {'O'}), {'O', 5}},
    {"Nesting too deep at ", SCOPE + Times(1000, Hex("F8 06 00 00 00 00 00")) + "F8 06 00", {}},
    {"Nesting too deep at ", Times(1000, Hex("F8 05 00 00")) + "F8 05 00", {}},
};

const Bytes RELOCATABLE = AdExtension(AdAttribute(FILE_FORMAT, 2));
const Bytes NOT_LINKED = Environment(EnvAttribute(LINK_STATUS, 2));
const Bytes NO_ROOM = Hex("E5 01 F7 84 7F FF FF FF ED 02 00 00");
const std::string MEMORY = "Error: not enough memory\n";
const std::string WIDE = "Numbers longer than 32 bits are not supported\n";
const std::string DECLARE = "Unknown processor, please declare processor with /p\n";

const std::vector<FatalCase> OTHER_CASES = {
    {"Unrecognized value at ", PUBLIC + "E2 C9 20", {0xE2}, Part::EXTERNAL},
    {UNEXPECTED, Hex("E7"), {}, Part::EXTERNAL},
    {UNEXPECTED, Hex("E8 1F"), {}, Part::EXTERNAL},
    {UNEXPECTED, Hex("E8 20 n'a' F1 C8"), {}, Part::EXTERNAL},
    {UNEXPECTED, Hex("E8 20 n'a' F1 C9 20 10 15"), {0xE2}, Part::EXTERNAL},
    {WIDE, Hex("E2 C7 85 00 00 00 00 00"), {}, Part::TRAILER, NONE},
    {UNEXPECTED, Hex("E8 20 n'a' F1 C9 21"), {}, Part::EXTERNAL},
    {UNEXPECTED, PUBLIC + "E2 C9 21", {}, Part::EXTERNAL},
    {UNEXPECTED, Hex("F0 20 00 F1 CE 21"), {}, Part::AD_EXTENSION},
    {UNEXPECTED, Hex("F0 20 00 F1 CE 20 00 29"), {}, Part::AD_EXTENSION},
    {UNEXPECTED, Hex("F0 20 00 E5 01"), {}, Part::AD_EXTENSION},
    {UNEXPECTED, Hex("F0 21 00 F1 CE 21 00 32"), {0xF9}, Part::ENVIRONMENT},
    {UNEXPECTED, Hex("E6 01 C1 C1"), {}, Part::SEGMENTS},
    {UNEXPECTED, Hex("E8"), {}, Part::SEGMENTS},
    {UNEXPECTED, Hex("E7 01 FB"), {}, Part::SEGMENTS},
    {UNEXPECTED, Hex("E2 D4"), {}, Part::SEGMENTS},
    {UNEXPECTED, Hex("E8"), {}, Part::DATA},
    {UNEXPECTED, Hex("E2 C7"), {}, Part::DATA},
    {UNEXPECTED, Hex("E5 01 E2 D1"), {}, Part::DATA},
    {UNEXPECTED, {0xED}, {0xED}, Part::DATA},
    {MEMORY, Hex("ED 84 80 00 00 00 01"), {}, Part::DATA, NONE},
    {UNEXPECTED, Hex("E2 C7 BE 10 E1"), {}, Part::TRAILER},
    {UNEXPECTED, Hex("E2 C7 BF"), {}, Part::TRAILER},
    {UNEXPECTED, Hex("E2 C7 BE"), {0xBF}, Part::TRAILER},
    {UNEXPECTED, Hex("E2 C8"), {}, Part::TRAILER},
    {UNEXPECTED, {0xE0}, {}, Part::MODULE_END},
    {MEMORY, NO_ROOM, {}, Part::DATA, NONE},
    {MEMORY, TYPE + "'x' 00 00 00 05 84 7F FF FF FF", {0xF9}, Part::DEBUG, NONE},
    {"/T.ABS is non-absolute TASKING IEEE-695 format\n", RELOCATABLE, {}, Part::AD_EXTENSION, NONE},
    {"/T.ABS was not linked successfully\n", NOT_LINKED, {}, Part::ENVIRONMENT, NONE},
    {"Unexpected end of file at ", Hex("E5 01 ED 7F"), Times(16, {7}), Part::DATA, "%x\n", 17},
    {"Unknown processor: z80\n", {0xE1}, {}, Part::MODULE_END, NONE, 0, "z80"},
    {"Unknown model: 296sa_\n", {0xE1}, {}, Part::MODULE_END, NONE, 0, "296sa_"},
    {DECLARE, {0xE1}, {}, Part::MODULE_END, NONE, 0, ""},
    {"/T.ABS not in TASKING IEEE-695 format\n", {0xE1}, {}, Part::MODULE_END, NONE},
};

}  // namespace

ObjectFile FatalCase::File() const {
    ObjectFile file = {.processor = processor, .order = {part}};
    if (message.find("not in TASKING") != std::string::npos) file.header = {0xE1};
    file.*PARTS[static_cast<size_t>(part)] = read + rest;
    return file;
}

std::string FatalCase::Expected() const {
    if (*format == '\0') return message;
    const size_t offset = PartOffset(File(), part) + read.size() - 1 + behind;
    char text[16];
    std::snprintf(text, sizeof text, *(format + 1) == 'X' ? "%X\n" : "%x\n",
                  static_cast<uint32_t>(offset));
    return message + text;
}

Bytes CircleOfAttributes() {
    const Bytes circle = NamedType(0x46, "a", 0x100, def::Qualified(1, 0x101)) +
                         NamedType(0x47, "b", 0x101, def::Qualified(1, 0x100));
    const Bytes debug = Bb1("M", circle) + Bb3("M", GlobalVariable(0x48, "v", 0x100, 0x10));
    return Build({.debug = debug + Bytes{0xE0, 0}});
}

std::vector<FatalCase> FatalCases() {
    std::vector<FatalCase> cases = TypeCases();
    for (const auto& more : {SCOPE_CASES, OTHER_CASES})
        cases.insert(cases.end(), more.begin(), more.end());
    return cases;
}

}  // namespace scan695::test
