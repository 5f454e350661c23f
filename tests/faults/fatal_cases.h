// Damaged files with the fatal message that each must give: as a test, and as seeds of the fuzzers.
#pragma once

#include <string>
#include <vector>

#include "tests/support/test.h"

namespace scan695::test {

struct FatalCase {
    // The message up to the offset that most end with, or its tail behind a path.
    std::string message;
    Bytes read;           // the part up to and including the last byte that is read
    Bytes rest = {0xF9};  // what follows
    Part part = Part::DEBUG;
    const char* format = "%x\n";  // of the offset
    uint32_t behind = 0;          // the offset given lies that far behind the last byte read
    Text processor = "80166";

    ObjectFile File() const;
    // The whole message, with the offset in the built file.
    std::string Expected() const;
};

std::vector<FatalCase> FatalCases();

// Attribute types that refer to one another: a debug run stops when it sorts the symbols.
Bytes CircleOfAttributes();

}  // namespace scan695::test
