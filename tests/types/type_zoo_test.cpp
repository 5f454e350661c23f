// Types of every kind through Convert: the whole STF text for each processor, the whole trace of
// the debug part for one, and the places where a block of types stops the run.
// SCAN695_RENEW_GOLDEN=1 in the environment writes the golden files anew.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "tests/support/convert.h"
#include "tests/types/zoo.h"

namespace scan695::test {
namespace {

namespace fs = std::filesystem;

void ExpectGolden(const std::string& text, const std::string& name) {
    const fs::path golden = fs::path(SCAN695_SOURCE_DIR "/tests/types/golden") / name;
    if (std::getenv("SCAN695_RENEW_GOLDEN") != nullptr)
        WriteWholeFile(golden, {text.begin(), text.end()});
    EXPECT_EQ(text, ReadWholeFile(golden));
}

// The text without the comments that DebugMode adds.
std::string WithoutComments(const std::string& text) {
    std::istringstream lines(text);
    std::string rest;
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("// ti->")) rest += line + '\n';
    return rest;
}

class TypeZooOf : public testing::TestWithParam<const char*> {};

TEST_P(TypeZooOf, GivesItsStfText) {
    const Bytes file = Build(TypeZoo(GetParam()));
    const Converted run = ConvertBytes(file);
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.console.find("WARNING: Debug record for type lost corrupted. Type ignored.\n"),
              std::string::npos);
    EXPECT_EQ(run.stf, WithoutComments(ConvertBytes(file, true).stf));
    ExpectGolden(UnixLines(run.stf), std::string(GetParam()) + ".stf");
}

INSTANTIATE_TEST_SUITE_P(Processors, TypeZooOf, testing::Values("80166", "296sa_e"));

TEST(TypeZoo, TracesEveryStep) {
    const Converted run = ConvertBytes(Build(TypeZoo("tricore")), true);
    EXPECT_EQ(run.status, 0);
    const size_t begin = run.console.find("Begin of Debug Info");
    const size_t end = run.console.find("EOF:\n");
    ASSERT_TRUE(begin < end && end != std::string::npos) << run.console;
    ExpectGolden(run.console.substr(begin, end - begin), "tricore.console");
    ExpectGolden(UnixLines(run.stf), "tricore.stf");
}

struct Stop {
    const char* body;  // of a BB1 block, behind its head
    const char*
        message;  // with the offset of the last byte read, counted from the body, for %x or %X
    uint32_t offset;
};

TEST(BlockOfTypes, StopsAtWhatItCannotRead) {
    const Stop stops[] = {
        {"E5", "Unexpected record at %x\n", 0},
        {"F0 E5", "Unexpected record at %x\n", 0},
        {"F2 820100 CF 00", "Unexpected record at %x\n", 4},
        {"F2 820100 CE 01 05", "Unexpected type ident at %x\n", 5},
        {"F2 81FF CE 00 05", "Unrecognized compound type at %X\n", 4},
        {"F2 820100 CE 00 E5", "Cannot scan type index at %X\n", 5},
        {"F2 820100 CE 00 'x' 08 00 E5", "Invalid function type encountered at %X\n", 8},
        {"F2 820100 CE 00 'x' 08 00 00 05 84FFFFFFFF E5",
         "Invalid function type encountered at %X\n", 15},
        {"F2 820100 CE 00 'x' 08 00 00 05 8480000000 00", "Error: not enough memory\n", 0},
        {"F2 820100 CE 00 'x' 08 00 00 05 8310FFFF 00", "Error: not enough memory\n", 0},
        {"F2 820100 CE 00 'Z' 05 E5", "Invalid C array type encountered at %X\n", 7},
        {"F2 820100 CE 00 'n' E5", "Invalid N qualifier encountered at %X\n", 6},
        {"F2 820100 CE 00 'n' 03 00 E5", "Invalid pointer type encountered at %X\n", 8},
        {"F2 820100 CE 00 'Q' E5", "Invalid Q qualifier encountered at %X\n", 6},
        {"F2 820100 CE 00 'S' E5", "Invalid struct type encountered at %X\n", 6},
        {"F2 820100 CE 00 'T' E5", "Invalid 'T' typedef encountered at %X\n", 6},
        {"F2 820100 CE 00 't' 80", "Invalid 't' typedef encountered at %X\n", 7},
        {"F2 820100 CE 00 'g' 00 E5", "Invalid bitfield type encountered at %X\n", 7},
        {"F2 820100 CE 00 'N' 00", "Unexpected end of file at %x\n", 8},
    };
    for (const Stop& stop : stops) {
        SCOPED_TRACE(stop.body);
        ObjectFile file;
        file.module_end = {};
        file.debug = Bytes{0xF8, 0x01, 0x00} + Text("M") + Hex(stop.body);
        const uint32_t body = PartOffset(file, Part::kDebug) + 5;
        char message[100];
        std::snprintf(message, sizeof message, stop.message, body + stop.offset);
        const Converted run = ConvertBytes(Build(file));
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.console.find(message), std::string::npos) << message << run.console;
    }
}

// 1,000 definitions inside one another are read, one more is refused, whatever they are.
TEST(BlockOfTypes, NestsToItsLimit) {
    struct Nest {
        Bytes open, close;
    };
    for (const Nest& nest : {Nest{Hex("'P'"), {}}, Nest{Hex("'S' 02 n'm'"), Hex("00 00")}}) {
        for (const size_t depth : {1000U, 1001U}) {
            const TypeDef definition(Times(depth - 1, nest.open) + Num(2) +
                                     Times(depth - 1, nest.close));
            ObjectFile file;
            file.debug = Bb1("M", TypeRecord(256, 0, definition));
            file.trailer = Trailer(0);
            const Converted run = ConvertBytes(Build(file));
            EXPECT_EQ(run.status, depth == 1000 ? 0 : 1);
            EXPECT_EQ(run.console.find("Nesting too deep at ") != std::string::npos, depth == 1001);
        }
    }
}

// A list of more elements than an item of the image holds keeps its count and loses elements.
TEST(BlockOfTypes, KeepsTheCountOfALongList) {
    const auto members = [](size_t count) {
        std::vector<Member> list;
        for (size_t i = 0; i < count; ++i) list.push_back({"m", 300, i});
        return list;
    };
    struct Case {
        size_t count;
        const char* fields;
    };
    for (const Case& c : {Case{4095, "count=4095;\ninfo=@Member.0;\n"},
                          Case{4096, "count=4096;\ninfo=@Member.-4096;\n"}}) {
        ObjectFile file;
        file.debug = Bb1("M", TypeRecord(256, 0, def::Struct(9, members(c.count))) +
                                  TypeRecord(300, 0, def::SmallPointer(2)));
        file.trailer = Trailer(0);
        const Converted run = ConvertBytes(Build(file), true);
        EXPECT_EQ(run.status, 0);
        EXPECT_NE(UnixLines(run.stf).find(c.fields), std::string::npos);
    }
}

}  // namespace
}  // namespace scan695::test
