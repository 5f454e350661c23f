#include "driver/paths.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/files.h"

namespace scan695 {
namespace {

TEST(Paths, ReplaceExtension) {
    const std::string long115 = std::string(111, 'D') + ".ABS";
    const std::string long116 = std::string(112, 'D') + ".ABS";
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
        {long115, std::string(111, 'D') + ".FST"},
        {long116, long116},
    };
    for (const auto& c : cases) EXPECT_EQ(ReplaceExtension(c.path, "FST"), c.fst) << c.path;
}

TEST(Paths, FstPathIsNeverTheInput) {
    EXPECT_EQ(MakeFstPath("DIR/PROG.FST"), "DIR/PROG.FST.FST");
    const std::string longer(200, 'P');
    EXPECT_EQ(MakeFstPath(longer), longer + ".FST");
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
