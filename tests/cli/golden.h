// Comparison with the files in golden/; SCAN695_RENEW_GOLDEN=1 in the environment writes them anew.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/convert.h"

namespace scan695::test {

inline const std::filesystem::path GOLDEN = SCAN695_SOURCE_DIR "/tests/cli/golden";

inline void ExpectGolden(const std::string& text, const char* name) {
    if (std::getenv("SCAN695_RENEW_GOLDEN") != nullptr)
        WriteWholeFile(GOLDEN / name, {text.begin(), text.end()});
    EXPECT_EQ(text, ReadWholeFile(GOLDEN / name));
}

}  // namespace scan695::test
