// Every fatal message that bytes of an input can bring about, in both modes.
#include <gtest/gtest.h>

#include "tests/faults/fatal_cases.h"
#include "tests/support/samples.h"

namespace scan695::test {
namespace {

namespace fs = std::filesystem;

TEST(Fatal, Messages) {
    const fs::path directory = ScratchDirectory();
    const fs::path input = directory / "t.abs";
    for (const FatalCase& fault : FatalCases()) {
        const Bytes file = Build(fault.File());
        for (const bool debug : {false, true}) {
            WriteWholeFile(input, file);
            WriteWholeFile(directory / "T.FST", {1, 2, 3});  // of an earlier run
            const Converted result = ConvertFile(input, directory / "t.stf", debug);
            EXPECT_TRUE(StoppedWith(result, fault.Expected()))
                << "status " << result.status << ", expected: " << fault.Expected() << "got: "
                << result.console.substr(result.console.size() -
                                         std::min<size_t>(result.console.size(), 200));
            EXPECT_FALSE(fs::exists(directory / "T.FST")) << fault.message;
            EXPECT_TRUE(ReadWholeFile(input) == std::string(file.begin(), file.end()));
        }
    }
}

// Types that refer to one another in a circle have no size.
TEST(Fatal, CircleOfAttributes) {
    const Bytes file = CircleOfAttributes();
    EXPECT_EQ(ConvertBytes(file, false).status, 0);
    EXPECT_TRUE(StoppedWith(ConvertBytes(file, true), "Error: cannot read temporary buffer\n"));
}

}  // namespace
}  // namespace scan695::test
