// The module header, the gates, the segment part and the closing parts, through Convert.

#include <cstring>

#include "store/records.h"
#include "tests/support/test.h"

namespace scan695::test {
namespace {

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

FstHeader HeaderOf(const Converted& result) {
    FstHeader header = {};
    if (result.fst.size() >= sizeof header) std::memcpy(&header, result.fst.data(), sizeof header);
    return header;
}

TEST(Header, Processors) {
    const std::string attribs =
        "Attrib.0{\nname=\"DLL_Version\";\nvalue=\"1.44\";\n}\n"
        "Attrib.1{\nname=\"COMPILER\";\nvalue=\"TASKING\";\n}\n"
        "Attrib.2{\nname=\"HLLFORMAT\";\nvalue=\"IEEE695\";\n}\n";
    const std::string cpu = "Attrib.3{\nname=\"CPU\";\nvalue=\"";
    const struct {
        const char* name;
        std::string attrib;
        int processor, model_flags;  // in the FST file
        const char* pointer_size;
        Bytes extension = {};
    } cases[] = {
        {"80166", cpu + "C166\";\n}\n", 17, 1, "ptr_size=2,"},
        {"80166x", cpu + "C166\";\n}\n", 17, 1, "ptr_size=2,"},
        {"TRI", cpu + "Tricore\";\n}\n", 13, 1, "ptr_size=4,"},
        {"tricore2", cpu + "Tricore\";\n}\n", 13, 1, "ptr_size=4,"},
        {"296SA_E", "", 12, 3, "ptr_size=3,"},
        {"296SA_C", "", 12, 1, "ptr_size=3,"},
        {"296sa_c7", "", 12, 1, "ptr_size=3,"},
        {"296sa_e", "", 12, 1, "ptr_size=3,", AdExtension(AdAttribute(MEMORY_MODEL, 2))},
        {"80166", cpu + "C166\";\n}\n", 17, 3, "", AdExtension(AdAttribute(MEMORY_MODEL, 6))},
    };
    for (const auto& c : cases) {
        const Converted result = ConvertBytes(
            Build({.processor = c.name, .ad_extension = c.extension, .trailer = Trailer(0)}), true);
        EXPECT_EQ(UnixLines(result.stf), attribs + c.attrib) << c.name;
        EXPECT_EQ(HeaderOf(result).processor, c.processor) << c.name;
        EXPECT_EQ(HeaderOf(result).model_flags, c.model_flags) << c.name;
        EXPECT_TRUE(Contains(result.console, c.pointer_size)) << result.console;
    }
}

// Headers that stop the run, and what else stands on the console in debug mode.
TEST(Header, Parts) {
    const std::string letters =
        "Segment: name=A, idx=1, mem_type=0\nSegment: name=B, idx=2, mem_type=0\n"
        "Segment: name=C, idx=3, mem_type=2\nSegment: name=D, idx=4, mem_type=6\n"
        "End of Segment Part, rec=e8\n";
    const std::string table =
        "C3 on segment -- ignore\nC5 on segment -- ignore\nC1/C2/C6/CD on segment 1 -- ignore\n"
        "End of Segment Part, rec=e8\nSegment 1, mem_type=0, addr=0, offset=7f, size=20\n";
    const Bytes segment = Hex("E6 01 C1 D3 D0 n'A'");
    Bytes ObjectFile::*const header = &ObjectFile::header;
    Bytes ObjectFile::*const extension = &ObjectFile::ad_extension;
    Bytes ObjectFile::*const environment = &ObjectFile::environment;
    Bytes ObjectFile::*const segments = &ObjectFile::segments;
    const struct {
        Bytes ObjectFile::*part;
        Bytes bytes;
        std::string console;  // or the message of a stop
    } cases[] = {
        {header, Hex("E0 n'tri' n'p' E2"), "Unexpected record at 7\n"},
        {header, Hex("E0 n'tri' n'p' EC 08 E2 D7"), "Unexpected record at 8\n"},
        {header, Hex("E0 n'tri' n'p' EC 41 01 CC E2"), "Unexpected record at 9\n"},  // 65 bits
        {header, Hex("E0 n'tri' n'p' EC 84 80 00 00 00 02 CC"),
         "Unexpected record at 11\n"},  // 2^32
        {header, Hex("E0 n'tri' n'p' EC 08 04 E2 D7 01 00"), "Unexpected record at c\n"},
        {header, Hex("E0 n'tri' n'p' EC 08 04 CD E2 D7 00 E2"), "Unexpected record at d\n"},
        {extension, AdExtension(AdAttribute(FILE_FORMAT, 1)), "     File format=1\n"},
        {extension, AdExtension(AdAttribute(CASE_SENSE, 1)), "     Case sens=0\n"},
        {environment, Environment(EnvAttribute(LINK_STATUS, 1)), "linked with warning\n"},
        {environment, Environment(EnvAttribute(DATE_TIME, 1, 2, 3, 4, 5, 6, 7)), ", 6 parts\n"},
        {environment, Nn(33, "old") + Atn(9, 0, 55) + Bytes{0x90}, "     Comments=old\n"},
        {segments, segment + Hex("E6 02 C5 C1 D2 n'B' E6 03 C1 D3 C4 n'C' E6 04 C1 D3 n'D' E8"),
         letters},
        {segments, Hex("E2 CC 01 10") + segment + Hex("E8"),
         "**** SetSegmentBase: inv seg=1\nSegment Base: idx=1, base=10\n"},
        {segments,
         segment + Hex("E2 D3 01 20 E7 01 E2 D2 01 7F E2 C3 n'x' E2 C5 n'x' 01 02 E2 C6 01 02 E8"),
         table},
        {segments, segment + Hex("E6 01 C1 D3 C4 n'B' E2 D3 01 07 E8"),
         "B, idx=1, mem_type=2\nSegment Size: idx=1, size=7\nEnd of Segment Part, rec=e8\n"
         "Segment 1, mem_type=0, addr=0, offset=0, size=7\n"
         "Segment 1, mem_type=2, addr=0, offset=0, size=0\n"},
        {segments, segment + Hex("E2 C3 n'x' 01 E8"),
         "C3 on segment -- ignore\nEnd of Segment Part, rec=1\n"},
        {segments, segment + Hex("E7 01 02 03 E8"),
         "idx=1, mem_type=0\nEnd of Segment Part, rec=e8\n"},
        {segments, Times(51, segment) + Bytes{0xE8}, "**** Segment Table Overflow, limit is 50\n"},
        {&ObjectFile::data, Repeat(2) + Load(Times(300, {0x11})),
         "Repeat 2 times:\nCode: addr=00000000 size=300\nCode: addr=0000012C size=300\n"},
    };
    for (const auto& c : cases) {
        ObjectFile file = {.trailer = Trailer(0)};  // a part ends at a code of two bytes
        file.*c.part = c.bytes;
        const Converted result = ConvertBytes(Build(file), true);
        EXPECT_EQ(result.status, c.part == header ? 1 : 0) << c.console;
        EXPECT_TRUE(Contains(result.console, c.console)) << c.console << result.console;
    }
}

TEST(Header, TrailerAndEnd) {
    const struct {
        const char* bytes;
        uint32_t address;
    } cases[] = {{"E2 C7 84 00 01 00 00", 0x10000},
                 {"E2 C7 BE 84 00 01 00 00 BF", 0x10000},
                 {"E2 C7 BE 00 81 05 BF", 0},
                 {"E2 C7 80 BE 10 BF", 0x10}};
    for (const auto& c : cases) {
        const Converted result = ConvertBytes(Build({.trailer = Hex(c.bytes)}), true);
        EXPECT_EQ(HeaderOf(result).start_address, c.address) << c.bytes;
        EXPECT_EQ(HeaderOf(result).has_start_address, 1) << c.bytes;
    }
    EXPECT_EQ(HeaderOf(ConvertBytes(Build({}), true)).has_start_address, 0);
    EXPECT_EQ(ConvertBytes(Build({.mau_bits = 8, .mau_number = 8})).status, 0);  // 64 bits
}

}  // namespace
}  // namespace scan695::test
