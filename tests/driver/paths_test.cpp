#include "driver/paths.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/files.h"
#include "scan695.h"
#include "tests/support/test.h"

namespace scan695 {
namespace {

TEST(Paths, MakeFstPath) {
    const std::string longest(111, 'D');
    const struct {
        std::string path, fst;
    } cases[] = {
        {"C:\\WORK\\PROG.ABS", "C:\\WORK\\PROG.FST"},
        {"C:\\WORK.V1\\PROG", "C:\\WORK.V1\\PROG.FST"},
        {"PROG.A.B", "PROG.A.FST"},
        {"DIR.X/FILE", "DIR.FST"},
        {".ABS", ".FST"},
        {"PROG", "PROG.FST"},
        {"X:.ABS", "X:.FST"},
        {"A.B:PROG", "A.B:PROG.FST"},
        {"", ".FST"},
        {longest + ".ABS", longest + ".FST"},
        {longest + "D.ABS", longest + "D.ABS.FST"},  // too long for another extension
        {"DIR/PROG.FST", "DIR/PROG.FST.FST"},        // never the input itself
    };
    for (const auto& c : cases) EXPECT_EQ(MakeFstPath(c.path), c.fst) << c.path;
}

#ifndef _WIN32
TEST(Paths, PlaceOfFstFile) {
    EXPECT_EQ(PlaceOfFstFile("/home/ann/prog.abs", "/HOME/ANN/PROG.FST"), "/home/ann/PROG.FST");
    EXPECT_EQ(PlaceOfFstFile("prog.abs", "PROG.FST"), "PROG.FST");
    EXPECT_EQ(PlaceOfFstFile("dir.x/file", "DIR.FST"), "dir.x/DIR.FST");
}
#endif

// The first seven bytes alone count: a record byte, a length, and the first letters of a name.
TEST(Check, LooksAtSevenBytes) {
    const struct {
        const char* bytes;
        uint32_t answer;
    } cases[] = {
        {"E0 n'80166' ", 1},
        {"E0 n'TRI' 01 'x'", 1},
        {"E0 n'80166' n'prog' EC", 1},
        {"E0 n'TRI' E1", 0},
        {"E0 n'8016'  EC", 0},
        {"E1 n'80166'", 0},
        {"E0 n'tri' 01 'x'", 0},
        {"E0 n'TRIx' 01", 0},
        {"E0 05 'TRIxx'", 0},
        {"E0 03 '80166'", 0},
        {"E0 n'80167'", 0},
        {"E0 n'TRICORE'", 0},
        {"E0 n'296sa_e'", 0},
        {"E0 n'801666'", 0},
        {"E0 05 '8016'", 0},
        {"", 0},
    };
    const std::filesystem::path path = harness::ScratchDirectory() / "t.abs";
    for (const auto& c : cases) {
        harness::WriteWholeFile(path, builder::Hex(c.bytes));
        EXPECT_EQ(Check(0, path.c_str()), c.answer) << c.bytes;
    }
}

}  // namespace
}  // namespace scan695
