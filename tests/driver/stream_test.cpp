
#include <string>

#include "stf/stf_stream.h"
#include "tests/support/test.h"

namespace scan695 {
namespace {

namespace fs = std::filesystem;

// Opens the stream on a file of its own and gives its path.
fs::path OpenStream() {
    const fs::path path = harness::ScratchDirectory() / "t.stf";
    StartStf(path.c_str());
    outOpen(144);
    return path;
}

TEST(StfStream, LineForms) {
    const fs::path path = OpenStream();
    outBegin("Line", -5);
    outStr("name", "C:\\a\"b\t\xE4");
    outDec("n", INT32_MIN);
    outDec("zero", 0);
    outHex("h", 0);
    outHex("h", 0xFFFFFFFF);
    outHex("h", 0xABC0);
    outWord("w", "asm");
    outRef("r", "Block", 7);
    outComment("text");
    outEnd();
    outCloseFile();
    const std::string text = harness::ReadWholeFile(path);
    EXPECT_EQ(text.substr(text.find("Line")),
              "Line.-5{\r\nname=\"C:\\\\a\\\"b\t\xE4\";\r\nn=-2147483648;\r\nzero=0;\r\nh=0x0;\r\n"
              "h=0xffffffff;\r\nh=0xabc0;\r\nw=asm;\r\nr=@Block.7;\r\n// text\r\n}\r\n");
}

// A line that ends at, just before and just behind the payload.
TEST(StfStream, FlushAtThePayload) {
    constexpr uint32_t payload = StfState::PAYLOAD;
    for (const uint32_t end : {payload - 1, payload, payload + 1}) {
        const fs::path path = OpenStream();
        std::string filler;
        while (Stf.position + 200 < end) {
            outComment("filler");
            filler += "// filler\r\n";
        }
        const std::string last(end - Stf.position - 5, 'x');
        outComment(last.c_str());
        EXPECT_EQ(fs::file_size(path), end < payload ? 0 : payload);
        EXPECT_EQ(Stf.position, end < payload ? end : end - payload);
        outEnd();
        outCloseFile();
        EXPECT_TRUE(harness::ReadWholeFile(path).ends_with(filler + "// " + last + "\r\n}\r\n"))
            << end;
    }
}

}  // namespace
}  // namespace scan695
