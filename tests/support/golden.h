// Comparison with golden files, named by their path below tests/; SCAN695_RENEW_GOLDEN=1 in the
// environment writes them anew.
#pragma once

#include <cstdlib>

#include "tests/support/test.h"

namespace scan695::test {

inline const std::filesystem::path TESTS = SCAN695_SOURCE_DIR "/tests";

inline void ExpectGolden(const std::string& text, const std::string& name) {
    if (std::getenv("SCAN695_RENEW_GOLDEN") != nullptr)
        WriteWholeFile(TESTS / name, {text.begin(), text.end()});
    EXPECT_EQ(text, ReadWholeFile(TESTS / name));
}

}  // namespace scan695::test
