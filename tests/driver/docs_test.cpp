// The examples of docs/stf.md stand so in the STF files of the samples.
#include "tests/support/test.h"

namespace scan695::test {
namespace {

TEST(Docs, StfExamples) {
    std::string stf;
    for (const char* sample : {"/samples/c166.abs", "/samples/tricore.abs"})
        stf += ConvertFile(SCAN695_SOURCE_DIR + std::string(sample), ScratchDirectory() / "t").stf;
    stf = UnixLines(stf);
    const std::string page = ReadWholeFile(SCAN695_SOURCE_DIR "/docs/stf.md");
    const std::string fence = "```\n";
    int examples = 0;
    for (size_t begin = page.find(fence); begin != std::string::npos; ++examples) {
        begin += fence.size();
        const size_t end = page.find(fence, begin);
        ASSERT_NE(end, std::string::npos);
        const std::string example = page.substr(begin, end - begin);
        EXPECT_NE(stf.find("\n" + example), std::string::npos) << example;
        begin = page.find(fence, end + fence.size());
    }
    EXPECT_GT(examples, 8);
}

}  // namespace
}  // namespace scan695::test
