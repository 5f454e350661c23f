// Symbols of every attribute kind: the bytes of one symbol and the STF text that comes of it. The
// plainest of each kind stand in the golden files of the traces. Symbols with many lifetimes.
#include <gtest/gtest.h>

#include <string>

#include "tests/scopes/scope_case.h"

namespace scan695::test {
namespace {

// A symbol by its name and what stands from its kind on. Type 10 is int.
std::string Symbol(const std::string& name, const std::string& kind) {
    return "F0 46 n'" + name + "' F1 CE 46 10 " + kind;
}

std::string Auto(const std::string& name, const std::string& offset) {
    return "{ name='" + name + "'; address=stack " + offset +
           "; storageClass=auto; type=int; module=@Module.0; } ";
}
const std::string X_AUTO = "Symbol.0" + Auto("x", "4");

std::string Register(const std::string& code) {
    return "Symbol.0{ name='x'; address=reg " + code +
           " storageClass=register; type=int; module=@Module.0; } ";
}

std::string Placed(const std::string& name, const std::string& address,
                   const std::string& storage_class = "") {
    return "Symbol.0{ name='" + name + "'; address=" + address + "; " + storage_class +
           "type=int; module=@Module.0; } ";
}

const struct {
    bool c;  // in a C module, otherwise in an assembled one
    const char* what;
    std::string bytes;
    std::string records;
} CASES[] = {
    {true, "auto void", "F0 46 n'x' F1 CE 46 00 01 04", "// REJECTING VOID SYMBOL x "},
    {true, "high byte", Symbol("x", "02 82 20 07"), Register("0x82000003; // RH3")},
    {true, "word ignores bit 0", Symbol("x", "02 82 10 07"), Register("0x80000003; // R3")},
    {true, "widest pair", Symbol("x", "0A 82 41 FE 00"), Register("0x84f0000f; // R15,R15")},
    {true, "omitted memory id", Symbol("x", "08 80 E2 CE 46 05"), Placed("x", "0x5")},
    {true, "one underscore goes", Symbol("__x", "08 E2 CE 46 01"), Placed("_x", "0x1")},
    {true, "based", Symbol("_12a3", "0C 01 02 03 04 05 E2 CE 46 09"), Placed("a3", "0x9")},
    {true, "based static", Symbol("_12a", "0C 01 02 00 04 05 E2 CE 46 09"),
     "// REJECTING Static SYMBOL a "},
    {true, "constant, last of three values",
     Symbol("x", "10 07 01 05 06 E2 CE 46 01 E2 CE 46 02 E2 CE 46 03"), Placed("x", "0x3")},
    {true, "constant, static", Symbol("x", "10 07"), "// REJECTING Static SYMBOL x "},
    {true, "asm symbol loses two", Symbol("__x", "13 02 01 E2 CE 46 01"), Placed("x", "0x1")},
    {true, "misc without values", Symbol("x", "3E 01 00"), Placed("x", "0x0")},
    {true, "misc of two", Symbol("x", "3F 01 02 E2 CE 46 04 E2 CE 46 05"), Placed("x", "0x5")},
    {true, "misc with a number", Symbol("x", "41 09"), Placed("x", "0x0")},
    {true, "unfit name", Symbol("x.y", "01 04"), "// REJECTING SYMBOL x.y "},
    {true, "digit behind underscores", Symbol("__1", "01 04"), "// REJECTING SYMBOL _1 "},
    {true, "digits stay", Symbol("_1x", "01 04"), "// REJECTING SYMBOL 1x "},
    {true, "unknown type", "F0 46 n'x' F1 CE 46 82 80 00 01 04", X_AUTO},
    {true, "static with one lifetime",
     Symbol("x",
            "03 E2 CE 46 05 F0 46 00 F1 CE 46 00 3F 46 03 E2 CE 46 10 E2 CE 46 03 E2 CE 46 05"
            "F0 46 00 F1 CE 46 00 3F 46 03 E2 CE 46 20 E2 CE 46 0B E2 CE 46 05"),
     Placed("x", "0x5", "storageClass=static; ")},
    {true, "no name field", "F0 46 F1 CE 46 10 01 04", "// REJECTING SYMBOL  "},
    {true, "40 characters keep 31",
     Symbol("abcdefghijklmnopqrstuvwxyz0123456789ABCD", "08 E2 CE 46 01"),
     Placed("abcdefghijklmnopqrstuvwxyz01234", "0x1")},
    {true, "unknown misc code", Symbol("x", "01 04 F1 CE 46 00 3F 01 00"), X_AUTO},
    {true, "names under the same index are passed, with what stands behind",
     Symbol("x", "01 04 F0 46 n'y' E5 01 F0 81 46 n'y' F1 CE 46 00 3F 3B 00"), X_AUTO},
    {true, "short index against the low byte of a long one",
     "F0 82 02 46 n'x' F1 CE 82 02 46 10 01 04 F0 46 n'y' E5 01", X_AUTO},
    {true, "one lifetime gives the place",
     Symbol("x",
            "01 04 F1 CE 46 00 3F 46 03 E2 CE 46 20 E2 CE 46 0A E2 CE 46 82 10 06"
            "F0 46 00 F1 CE 46 00 3F 46 03 E2 CE 46 10 E2 CE 46 02 E2 CE 46 82 10 06"),
     Register("0x80000003; // R3")},
    {false, "underscore stays", Symbol("_x", "08 E2 CE 46 01"), Placed("_x", "0x1")},
    {false, "based keeps its digits", Symbol("_1x", "0C 01 02 03 04 05 E2 CE 46 09"),
     "// REJECTING SYMBOL _1x "},
    {false, "label without memory", Symbol("x", "13 E2 CE 46 01"), "// REJECTING Static SYMBOL x "},
    {false, "static label", Symbol("_x", "13 02 E2 CE 46 01"),
     Placed("_x", "0x1", "storageClass=static; ")},
};

// Behind each symbol stands an auto "z", to see that the reader is in step.
TEST(SymbolKinds, Records) {
    for (const auto& c : CASES) {
        const Bytes scope = Hex(c.bytes + "F0 47 n'z' F1 CE 47 10 01 06");
        EXPECT_EQ(Outcome({c.c ? CModule(scope) : AsmModule(scope)}),
                  (c.c ? C_MODULE : ASM_MODULE) + c.records +
                      (c.records.starts_with("Symbol") ? "Symbol.1" : "Symbol.0") + Auto("z", "6"))
            << c.what;
    }
}

// A list above 65,535 bytes is cut when it is stored: behind 4,095 locations the count and the
// place no longer agree, and the block's end looks for the last one where it is not.
TEST(SymbolKinds, MoreLifetimesThanAnItemHolds) {
    for (const uint32_t ranges : {4095U, 4096U, 65536U}) {
        Bytes body = AutoVariable(0x47, "a", 0x10, 0) + LifetimeMark(0x47, 16 * ranges, 1, 2);
        for (uint32_t i = 1; i < ranges; ++i) body += Lifetime(0x47, 16 * i, 16 * i + 4, 1, 2);
        const std::string outcome =
            Outcome({CModule(Bb4({.name = "f", .type = 0x10, .body = body}))});
        if (ranges > 4095)
            EXPECT_EQ(outcome, "Error: cannot read temporary buffer\n") << ranges;
        else
            EXPECT_NE(outcome.find("locationCount=4095;"), std::string::npos);
    }
}

}  // namespace
}  // namespace scan695::test
