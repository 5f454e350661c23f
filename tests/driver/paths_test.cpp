#include "driver/paths.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/files.h"

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

}  // namespace
}  // namespace scan695
