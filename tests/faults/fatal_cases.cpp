#include "tests/faults/fatal_cases.h"

#include <cstdio>

namespace scan695::test {

namespace {

constexpr const char* UPPER = "%X\n";
constexpr const char* NONE = "";

// Heads of blocks, up to where a fault comes.
const Bytes TYPES = Hex("F8 01 00 n'M' F0 46 n'T'");
const Bytes TYPE = TYPES + Hex("F2 82 01 00 CE 46");
const Bytes SCOPE = Hex("F8 01 00 n'M' F9 F8 03 00 n'M'");
const Bytes SYMBOL = SCOPE + Hex("F0 46 n'v' F1 CE 46 10");
const Bytes ASM = Hex("F8 0A 00 n'A' 00 00 00 00 00 00 00 00 00");
const Bytes LINES = Hex("F8 05 00 n's.c' F0 46 00");
const Bytes PUBLIC = Hex("E8 20 n'a' F1 C9 20 10 13");

std::vector<FatalCase> TypeCases() {
    std::vector<FatalCase> cases = {
        {"Unexpected type ident at ", Part::kDebug, TYPES + Hex("F2 82 01 00 CE 47")},
        {"Unrecognized compound type at ", Part::kDebug, TYPES + Hex("F2 81 FF CE 46"), {5}, UPPER},
        {"Unexpected record at ", Part::kDebug, TYPES + Hex("F2 82 01 00 CF"), {5}},
        {"Unexpected record at ", Part::kDebug, TYPES + Hex("F2"), {0xCE}},
        {"Unexpected record at ", Part::kDebug, TYPES + Hex("F3")},
    };
    const struct {
        const char* message;
        const char* bytes;
    } definitions[] = {
        {"Cannot scan type index at ", ""},
        {"Invalid function type encountered at ", "'x'"},
        {"Invalid function type encountered at ", "'x' 00 00"},
        {"Invalid function type encountered at ", "'x' 00 00 00 05"},
        {"Invalid function type encountered at ", "'x' 00 00 00 05 00"},
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
        cases.push_back({c.message, Part::kDebug, TYPE + Hex(c.bytes), {0xF9}, UPPER});
    return cases;
}

std::vector<FatalCase> ScopeCases() {
    const Bytes mark = Hex("F0 46 00 F1 CE 46 00 3F 46 03 E2 CE 46 10 E2 CE 46 00 E2 CE 46 05");
    return {
        {"Unexpected record at ", Part::kDebug, Hex("F8 07"), {}},
        {"Unexpected record at ", Part::kDebug, Hex("F8 01"), {0xF9}},
        {"Unexpected record at ", Part::kDebug, Hex("F8 01 00 n'M' F9 F8 03 00 n'm'")},
        {"Unexpected record=e0 at ", Part::kDebug, SCOPE + Hex("E0")},
        {"Unexpected record at ", Part::kDebug, SCOPE + Hex("F8 05")},
        {"Unexpected record=0 at ", Part::kDebug, SCOPE + Hex("F8 04 00 n'f'")},
        {"Unexpected record at ", Part::kDebug, SCOPE + Hex("F8 06 00 n'f' 00 00 00 F8 04")},
        {"Unexpected record=e0 at ", Part::kDebug, ASM + Hex("E0")},
        {"Unexpected record at ", Part::kDebug, ASM + Hex("F8 04")},
        {"Unexpected record at ", Part::kDebug, SYMBOL + Hex("14")},
        {"Unexpected record at ", Part::kDebug, SYMBOL + Hex("01")},
        {"Unexpected record at ", Part::kDebug, SYMBOL + Hex("03 00 E2 CE 47")},
        {"Unexpected record at ", Part::kDebug, SYMBOL + Hex("01 00 F1 CE 46 00 3E")},
        {"ASN:Unexpected record at ", Part::kDebug, SYMBOL + Hex("03 00 E2 CF")},
        {"Unrecognized value at ", Part::kDebug, SYMBOL + Hex("03 00 E2 CE 46")},
        {"Not ASN record = f9 at ", Part::kDebug, SYMBOL + Hex("3E 32 01 F9"), {0, 0}, "%x\n", 1},
        {"CvtTkStorageClass: unknown storage class encountered at ",
         Part::kDebug,
         SYMBOL + Hex("01 00") + mark,
         {0xF9, 0xF9}},
        {"Unexpected misc record=34, num=2 at ", Part::kDebug, LINES + Hex("F1 CE 46 00 40 34 02")},
        {"Unexpected record=e0 at ", Part::kDebug, LINES + Hex("E0")},
        {"Unexpected record at ", Part::kDebug, LINES + Hex("F1 CE 46 00 08")},
        {"Unexpected record at ", Part::kDebug, LINES + Hex("F8 04")},
        {"Nesting too deep at ", Part::kDebug, TYPE + Times(1000, {'O'}), {'O', 5}},
        {"Nesting too deep at ",
         Part::kDebug,
         SCOPE + Times(1000, Hex("F8 06 00 00 00 00 00")) + Hex("F8 06 00"),
         {}},
        {"Nesting too deep at ",
         Part::kDebug,
         Times(1000, Hex("F8 05 00 00")) + Hex("F8 05 00"),
         {}},
    };
}

std::vector<FatalCase> OtherCases() {
    std::vector<FatalCase> cases = {
        {"Unrecognized value at ", Part::kExternal, PUBLIC + Hex("E2 C9 20"), {0xE2}},
        {"Unexpected record at ", Part::kExternal, Hex("E7"), {}},
        {"Unexpected record at ", Part::kExternal, Hex("E8 1F"), {}},
        {"Unexpected record at ", Part::kExternal, Hex("E8 20 n'a' F1 C8"), {}},
        {"Unexpected record at ", Part::kExternal, Hex("E8 20 n'a' F1 C9 20 10 15"), {0xE2}},
        {"Numbers longer than 32 bits are not supported\n",
         Part::kTrailer,
         Hex("E2 C7 85 00 00 00 00 00"),
         {},
         NONE},
        {"Unexpected record at ", Part::kModuleEnd, {0xE0}, {}},
        {"Error: not enough memory\n",
         Part::kData,
         Hex("E5 01 F7 84 7F FF FF FF ED 02 00 00"),
         {},
         NONE},
        {"Error: not enough memory\n",
         Part::kDebug,
         TYPE + Hex("'x' 00 00 00 05 84 7F FF FF FF"),
         {0xF9},
         NONE},
        {"/T.ABS is non-absolute TASKING IEEE-695 format\n",
         Part::kAdExtension,
         AdExtension(AdAttribute(kFileFormat, 2)),
         {},
         NONE},
        {"/T.ABS was not linked successfully\n",
         Part::kEnvironment,
         Environment(EnvAttribute(kLinkStatus, 2)),
         {},
         NONE},
        {"Unexpected end of file at ", Part::kData, Hex("E5 01 ED 7F"), Times(16, {7}), "%x\n", 17},
        {"Unknown processor: z80\n", Part::kModuleEnd, {0xE1}, {}, NONE, 0, "z80"},
        {"Unknown model: 296sa_\n", Part::kModuleEnd, {0xE1}, {}, NONE, 0, "296sa_"},
        {"Unknown processor, please declare processor with /p\n",
         Part::kModuleEnd,
         {0xE1},
         {},
         NONE,
         0,
         ""},
        {"/T.ABS not in TASKING IEEE-695 format\n", Part::kModuleEnd, {0xE1}, {}, NONE},
    };
    return cases;
}

}  // namespace

ObjectFile FatalCase::File() const {
    ObjectFile file = {.processor = processor, .order = {part}};
    if (message.find("not in TASKING") != std::string::npos) file.header = {0xE1};
    const Bytes all = read + rest;
    switch (part) {
        case Part::kAdExtension:
            file.ad_extension = all;
            break;
        case Part::kEnvironment:
            file.environment = all;
            break;
        case Part::kSegments:
            file.segments = all;
            break;
        case Part::kExternal:
            file.external = all;
            break;
        case Part::kDebug:
            file.debug = all;
            break;
        case Part::kData:
            file.data = all;
            break;
        case Part::kTrailer:
            file.trailer = all;
            break;
        case Part::kModuleEnd:
            file.module_end = all;
            break;
    }
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
    for (const auto& more : {ScopeCases(), OtherCases()})
        cases.insert(cases.end(), more.begin(), more.end());
    return cases;
}

}  // namespace scan695::test
