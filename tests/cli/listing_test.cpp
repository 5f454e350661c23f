// What the inspector prints, as text and as JSON.
#include <gtest/gtest.h>

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/inspector/json.h"
#include "cli/inspector/reader.h"
#include "cli/inspector/text.h"
#include "tests/cli/fst_parts.h"
#include "tests/support/convert.h"

namespace scan695 {
namespace {

const char* const TABLES[] = {"modules", "symbols", "types", "blocks", "lines", "ranges", "code"};

inspector::Fst SoundFst() {
    inspector::Fst fst;
    std::string error;
    EXPECT_TRUE(inspector::Parse(test::SoundParts().Assemble(), fst, error)) << error;
    return fst;
}

// SCAN695_RENEW_GOLDEN=1 in the environment writes the golden file anew.
TEST(Listing, MatchesTheGoldenText) {
    const inspector::Fst fst = SoundFst();
    std::ostringstream out;
    inspector::PrintSummary(fst, out);
    for (const char* name : TABLES) {
        out << '\n' << name << ":\n";
        inspector::PrintTable(fst, *inspector::FindTable(name), out);
    }
    const std::string golden = SCAN695_SOURCE_DIR "/tests/cli/golden/listing.txt";
    if (std::getenv("SCAN695_RENEW_GOLDEN") != nullptr) {
        const std::string text = out.str();
        test::WriteWholeFile(golden, {text.begin(), text.end()});
    }
    EXPECT_EQ(out.str(), test::ReadWholeFile(golden));
}

TEST(Listing, JsonHoldsTheSameTables) {
    const inspector::Fst fst = SoundFst();
    std::vector<const inspector::Table*> tables;
    for (const char* name : TABLES) tables.push_back(inspector::FindTable(name));
    std::ostringstream out;
    inspector::PrintJson(fst, tables, out);
    const auto document = nlohmann::json::parse(out.str());

    EXPECT_EQ(document["header"]["processor"], "C166");
    EXPECT_EQ(document["header"]["start_address"], 0x1000);
    EXPECT_EQ(document["sections"][2]["name"], "types");
    for (const char* name : TABLES) {
        size_t rows = 0;
        inspector::FindTable(name)->rows(fst, [&](const inspector::Row&) { ++rows; });
        EXPECT_EQ(document[name].size(), rows) << name;
    }
    const auto& symbols = document["symbols"];
    EXPECT_EQ(symbols[0]["name"], "Buffer");
    EXPECT_EQ(symbols[0]["type"], "array[4] of char");
    EXPECT_TRUE(symbols[0]["module"].is_null());
    EXPECT_EQ(symbols[1]["locations"][0]["storage"], "adjust");
    EXPECT_EQ(symbols[6]["name"], "c\\x0a\\xe4");
    EXPECT_EQ(document["types"][0]["fields"][1]["type"], "pointer to struct pair");
    EXPECT_EQ(document["types"][6]["type"], "attrib 0x10 of unresolved 0x1ff");
}

}  // namespace
}  // namespace scan695
