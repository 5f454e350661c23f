// What the pages of docs/ show is true: their examples stand in files of the samples, and the
// readers that they name exist.
#include <regex>

#include "builder/bytes.h"
#include "input/processor.h"
#include "tests/support/test.h"

namespace scan695::test {
namespace {

std::string Source(const std::string& path) {
    return ReadWholeFile(SCAN695_SOURCE_DIR "/" + path);
}

// The texts between the fences of a page.
std::vector<std::string> Examples(const std::string& page) {
    std::vector<std::string> examples;
    const std::string fence = "```\n";
    for (size_t begin = page.find(fence); begin != std::string::npos;) {
        begin += fence.size();
        const size_t end = page.find(fence, begin);
        examples.push_back(page.substr(begin, end - begin));
        begin = page.find(fence, end + fence.size());
    }
    return examples;
}

TEST(Docs, StfExamples) {
    std::string stf;
    for (const char* sample : {"/samples/c166.abs", "/samples/tricore.abs"})
        stf += ConvertFile(SCAN695_SOURCE_DIR + std::string(sample), ScratchDirectory() / "t").stf;
    stf = UnixLines(stf);
    const auto examples = Examples(Source("docs/stf.md"));
    for (const std::string& example : examples)
        EXPECT_NE(stf.find("\n" + example), std::string::npos) << example;
    EXPECT_GT(examples.size(), 8U);
}

TEST(Docs, InputExamplesAndReaders) {
    const std::string page = Source("docs/input.md");
    const std::string sample = Source("samples/c166.abs");
    const auto examples = Examples(page);
    for (const std::string& example : examples) {
        const builder::Bytes bytes = builder::Hex(example);
        EXPECT_NE(sample.find(std::string(bytes.begin(), bytes.end())), std::string::npos)
            << example;
    }
    EXPECT_GT(examples.size(), 5U);
    const std::regex reader("`(\\w+/\\w+\\.cpp)` `(\\w+)` \\|");
    int readers = 0;
    for (std::sregex_iterator row(page.begin(), page.end(), reader), end; row != end; ++row) {
        EXPECT_NE(Source((*row)[1]).find(' ' + (*row)[2].str() + '('), std::string::npos)
            << row->str();
        ++readers;
    }
    EXPECT_GT(readers, 30);
    for (const ProcessorKind& processor : PROCESSORS)
        EXPECT_NE(page.find("| `" + std::string(processor.prefix)), std::string::npos);
}

}  // namespace
}  // namespace scan695::test
