// Comparison with golden files, named by their path below tests/. A difference shows its first
// lines and leaves the new file under golden/ in the build folder; SCAN695_RENEW_GOLDEN=1 in the
// environment writes the golden files anew.
#pragma once

#include "tests/support/test.h"

namespace scan695::test {

inline const std::filesystem::path TESTS = SCAN695_SOURCE_DIR "/tests";

void ExpectGolden(const std::string& text, const std::string& name);
void ExpectGoldenBytes(const std::string& bytes, const std::string& name);

// STF text as it stands in golden files: the lines of a record, or of the comments in front of it,
// fill lines of up to 100 characters; the last line counts those of the text, which all end in
// CR LF.
std::string Folded(const std::string& stf);

}  // namespace scan695::test
