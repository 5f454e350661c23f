// Whatever a byte of an FST file says, the answers read nothing outside of it and come to an end.
#include <gtest/gtest.h>

#include <sstream>

#include "ask/diff.h"
#include "ask/find.h"
#include "ask/layouts.h"
#include "ask/sizes.h"
#include "tests/support/golden.h"

namespace scan695 {
namespace {

using inspector::Fst;

void AskEverything(const Fst& fst, const Fst& sound) {
    std::ostringstream out;
    {
        inspector::JsonWriter json(out);
        inspector::BeginDocument(json, "test", "");
        json.Key("answers").BeginArray();
        ask::Finder finder(fst);
        for (const char* text : {"0x1000", "0x1008", "0x1021", "0x2000", "0xFFFFFFFF", "main", "*",
                                 "beta.c:3", "nothing"}) {
            const ask::Query query = ask::ParseQuery(text);
            finder.Print(query, out);
            finder.Write(query, json);
        }
        for (const ask::Layout& layout : ask::AllLayouts(fst)) {
            PrintLayout(layout, out);
            WriteLayout(fst, layout, json);
        }
        json.End();
        const ask::Sizes sizes = ask::SizesOf(fst);
        PrintSizes(fst, sizes, 10, out);
        WriteSizes(fst, sizes, json);
        const ask::Diff diff = ask::Compare(fst, sound);
        PrintDiff(fst, sound, diff, out);
        WriteDiff(fst, sound, diff, json);
        json.End();
    }
    EXPECT_NE(out.str(), "");
}

TEST(Answers, SurviveEveryChangedByteAndEveryTruncation) {
    const std::string text = harness::ReadWholeFile(test::TESTS / "cli/golden/sound.fst");
    const std::vector<uint8_t> bytes(text.begin(), text.end());
    std::string error;
    Fst sound, damaged;
    ASSERT_TRUE(inspector::Parse(bytes, sound, error));
    AskEverything(sound, sound);
    for (size_t at = 0; at < bytes.size(); ++at) {
        for (const int change : {0x01, 0x80, 0xFF}) {
            std::vector<uint8_t> changed = bytes;
            changed[at] = static_cast<uint8_t>(changed[at] ^ change);
            if (inspector::Parse(changed, damaged, error)) AskEverything(damaged, sound);
        }
        if (inspector::Parse({bytes.begin(), bytes.begin() + static_cast<long>(at)}, damaged,
                             error))
            AskEverything(damaged, sound);
    }
}

}  // namespace
}  // namespace scan695
