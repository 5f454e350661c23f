// The module header, the gates, the segment part and the closing parts, through Convert.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "store/records.h"
#include "tests/support/convert.h"
#include "tests/support/object_builder.h"

namespace scan695::test {
namespace {

const std::string ATTRIBS =
    "Attrib.0{\nname=\"DLL_Version\";\nvalue=\"1.44\";\n}\n"
    "Attrib.1{\nname=\"COMPILER\";\nvalue=\"TASKING\";\n}\n"
    "Attrib.2{\nname=\"HLLFORMAT\";\nvalue=\"IEEE695\";\n}\n";

std::string CpuAttrib(const std::string& cpu) {
    return ATTRIBS + "Attrib.3{\nname=\"CPU\";\nvalue=\"" + cpu + "\";\n}\n";
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

FstHeader HeaderOf(const Converted& result) {
    FstHeader header = {};
    if (result.fst.size() >= sizeof header) std::memcpy(&header, result.fst.data(), sizeof header);
    return header;
}

TEST(Header, Processors) {
    const struct {
        const char* name;
        const char* cpu;  // null for no Attrib
        int processor;    // in the FST file
        int model_flags;
        const char* pointer_size;
    } cases[] = {
        {"80166", "C166", 17, 1, "ptr_size=2,"},    {"80166x", "C166", 17, 1, "ptr_size=2,"},
        {"TRI", "Tricore", 13, 1, "ptr_size=4,"},   {"tricore2", "Tricore", 13, 1, "ptr_size=4,"},
        {"296SA_E", nullptr, 12, 3, "ptr_size=3,"}, {"296sa_c7", nullptr, 12, 1, "ptr_size=3,"},
    };
    for (const auto& c : cases) {
        const Converted result = ConvertBytes(Build({.processor = c.name}), true);
        EXPECT_EQ(result.status, 0) << c.name;
        EXPECT_EQ(UnixLines(result.stf), c.cpu != nullptr ? CpuAttrib(c.cpu) : ATTRIBS) << c.name;
        EXPECT_EQ(HeaderOf(result).processor, c.processor) << c.name;
        EXPECT_EQ(HeaderOf(result).model_flags, c.model_flags) << c.name;
        EXPECT_TRUE(Contains(result.console, c.pointer_size)) << result.console;
    }
}

// Header bytes in text form, and the message that the run stops with.
TEST(Header, Faults) {
    const struct {
        const char* what;
        const char* bytes;
        const char* message;
    } cases[] = {
        {"empty file", "", "Unexpected end of file at 0\n"},
        {"no MB", "E1 n'80166'", "/T.ABS not in TASKING IEEE-695 format\n"},
        {"unknown", "E0 n'T' n'p'", "Unknown processor: T\n"},
        {"no name", "E0 00", "Unknown processor, please declare processor with /p\n"},
        {"no letter", "E0 n'296sa_' n'p'", "Unknown model: 296sa_\n"},
        {"bad letter", "E0 n'296sa_x' n'p'", "Unknown model: 296sa_x\n"},
        {"no AD", "E0 n'tri' n'p' E2", "Unexpected record at 7\n"},
        {"no units", "E0 n'tri' n'p' EC 08 E2 D7", "Unexpected record at 8\n"},
        {"65 bits", "E0 n'tri' n'p' EC 41 01 CC E2", "Unexpected record at 9\n"},
        {"product that wraps", "E0 n'tri' n'p' EC 84 80 00 00 00 02 CC E2 D8 00",
         "Unexpected record at 11\n"},
        {"ASW out of order", "E0 n'tri' n'p' EC 08 04 E2 D7 01 00", "Unexpected record at c\n"},
        {"ASW without number", "E0 n'tri' n'p' EC 08 04 CD E2 D7 00 E2",
         "Unexpected record at d\n"},
        {"long number", "E0 n'tri' n'p' EC 08 04 E2 D7 00 85 01 02 03 04 05",
         "Numbers longer than 32 bits are not supported\n"},
        {"offset behind the end", "E0 n'tri' n'p' EC 08 08 CC E2 D7 00 7F",
         "Unexpected end of file at f\n"},
    };
    for (const auto& c : cases) {
        const Converted result = ConvertBytes(Hex(c.bytes));
        EXPECT_EQ(result.status, 1) << c.what;
        EXPECT_TRUE(
            result.console.ends_with(std::string(c.message) + "\a\nPress ENTER to terminate\n"))
            << c.what << ": " << result.console;
        EXPECT_EQ(result.stf, "") << c.what;
    }
}

TEST(Header, ExtensionAndEnvironment) {
    const struct {
        const char* what;
        ObjectFile file;
        const char* line;  // on the console in debug mode
        int status;
        int model_flags;
    } cases[] = {
        {"absolute",
         {.ad_extension = AdExtension(AdAttribute(kFileFormat, 1))},
         "     File format=1\n",
         0,
         1},
        {"not absolute",
         {.ad_extension = AdExtension(AdAttribute(kFileFormat, 2))},
         "T.ABS is non-absolute TASKING IEEE-695 format\n",
         1,
         0},
        {"memory model of an 80166",
         {.ad_extension = AdExtension(AdAttribute(kMemoryModel, 6))},
         "     Memory model=6\n",
         0,
         3},
        {"model overrules letter",
         {.processor = "296sa_e", .ad_extension = AdExtension(AdAttribute(kMemoryModel, 2))},
         "     Memory model=2\n",
         0,
         1},
        {"case",
         {.ad_extension = AdExtension(AdAttribute(kCaseSense, 1))},
         "     Case sens=0\n",
         0,
         1},
        {"other index",
         {.ad_extension = Nn(32, "") + Atn(33, 0, 38, 1)},
         "Unexpected record at",
         1,
         0},
        {"unknown attribute",
         {.ad_extension = Nn(32, "") + Atn(32, 0, 41, 1)},
         "Unexpected record at",
         1,
         0},
        {"no attribute", {.ad_extension = Nn(32, "")}, "Unexpected record at", 1, 0},
        {"link warning",
         {.environment = Environment(EnvAttribute(kLinkStatus, 1))},
         "T.ABS was linked with warning\n",
         0,
         1},
        {"link failed",
         {.environment = Environment(EnvAttribute(kLinkStatus, 2))},
         "T.ABS was not linked successfully\n",
         1,
         0},
        {"date",
         {.environment = Environment(EnvAttribute(kDateTime, 1, 2, 3, 4, 5, 6))},
         "     Date/Time, 6 parts\n",
         0,
         1},
        {"seventh number",
         {.environment = Environment(EnvAttribute(kDateTime, 1, 2, 3, 4, 5, 6, 7))},
         "     Date/Time, 6 parts\n",
         0,
         1},
        {"no date",
         {.environment = Environment(EnvAttribute(kDateTime))},
         "Unexpected record",
         1,
         0},
        {"text that does not come",
         {.environment = Nn(33, "kept") + Atn(9, 0, 55) + Bytes{0x90}},
         "     Comments=kept\n",
         0,
         1},
    };
    for (const auto& c : cases) {
        ObjectFile file = c.file;
        file.trailer = Trailer(0);  // a part ends at a code of two bytes
        const Converted result = ConvertBytes(Build(file), true);
        EXPECT_EQ(result.status, c.status) << c.what << result.console;
        EXPECT_TRUE(Contains(result.console, c.line)) << c.what << result.console;
        if (c.status == 0) {
            EXPECT_EQ(HeaderOf(result).model_flags, c.model_flags) << c.what;
        }
    }
}

TEST(Header, Segments) {
    const struct {
        const char* what;
        Bytes part;
        const char* line;
        int status;
    } cases[] = {
        {"memory letters",
         Hex("E6 01 C1 D3 D0 n'A' E6 02 C5 C1 D2 n'B' E6 03 C1 D3 C4 n'C' E6 04 C1 D3 n'D' E8"),
         "Segment: name=A, idx=1, mem_type=0\nSegment: name=B, idx=2, mem_type=0\n"
         "Segment: name=C, idx=3, mem_type=2\nSegment: name=D, idx=4, mem_type=6\n"
         "End of Segment Part, rec=e8\n",
         0},
        {"base before segment",
         Hex("E2 CC 01 10 E6 01 C1 D3 D0 n'A' E2 D3 01 20 E7 01 E2 D2 01 7F E8"),
         "**** SetSegmentBase: inv seg=1\nSegment Base: idx=1, base=10\n", 0},
        {"table",
         Hex("E6 01 C1 D3 D0 n'A' E2 D3 01 20 E7 01 E2 D2 01 7F E2 C3 n'x' E2 C5 n'x' 01 02"
             "E2 C6 01 02 E8"),
         "C3 on segment -- ignore\nC5 on segment -- ignore\nC1/C2/C6/CD on segment 1 -- ignore\n"
         "End of Segment Part, rec=e8\nSegment 1, mem_type=0, addr=0, offset=7f, size=20\n",
         0},
        {"51 segments", Times(51, Hex("E6 01 C1 D3 D0 n'A'")) + Bytes{0xE8},
         "**** Segment Table Overflow, limit is 50\n", 0},
        {"bad letters", Hex("E6 01 C1 C1 D0 n'A' E8"), "Unexpected record at", 1},
        {"first record", Hex("E8"), "Unexpected record at", 1},
        {"FB behind a good record", Hex("E7 01 FB"), "Unexpected record at", 1},
        {"unknown assignment", Hex("E2 D4 01 02"), "Unexpected record at", 1},
    };
    for (const auto& c : cases) {
        const Converted result = ConvertBytes(Build({.segments = c.part}), true);
        EXPECT_EQ(result.status, c.status) << c.what;
        EXPECT_TRUE(Contains(result.console, c.line)) << c.what << result.console;
    }
}

TEST(Header, TrailerAndEnd) {
    const struct {
        const char* bytes;
        int64_t address;  // -1 for a stop
    } cases[] = {
        {"E2 C7 84 00 01 00 00", 0x10000},
        {"E2 C7 BE 84 00 01 00 00 BF", 0x10000},
        {"E2 C7 BE 00 81 05 BF", 0},
        {"E2 C7 80 BE 10 BF", 0x10},
        {"E2 C7 BE 10 E1", -1},
        {"E2 C7 BF", -1},
        {"E2 C7 BE BF", -1},
        {"E2 C8 00", -1},
    };
    for (const auto& c : cases) {
        const Converted result = ConvertBytes(Build({.trailer = Hex(c.bytes)}), true);
        EXPECT_EQ(result.status, c.address < 0 ? 1 : 0) << c.bytes;
        if (c.address < 0) continue;
        EXPECT_EQ(HeaderOf(result).start_address, c.address) << c.bytes;
        EXPECT_EQ(HeaderOf(result).has_start_address, 1) << c.bytes;
    }
    EXPECT_EQ(HeaderOf(ConvertBytes(Build({}), true)).has_start_address, 0);
    EXPECT_EQ(ConvertBytes(Build({.module_end = {0xE2}})).status, 1);
}

}  // namespace
}  // namespace scan695::test
