// Symbols of every attribute kind: the bytes of one symbol and the STF text that comes of it.
#include <gtest/gtest.h>

#include <string>

#include "tests/scopes/scope_case.h"

namespace scan695::test {
namespace {

// Type 10 is int. Behind each symbol stands an auto "z", to see that the reader is in step.
constexpr const char* NEXT = "F0 47 n'z' F1 CE 47 10 01 06";
std::string NextSymbol(const std::string& number) {
    return "Symbol." + number +
           "{ name=\"z\"; address=stack 6; storageClass=auto; type=int; module=@Module.0; } ";
}

struct KindCase {
    const char* what;
    const char* bytes;
    std::string records;  // in front of those of "z"
};

const std::string AUTO_HEAD = "Symbol.0{ name=\"x\"; address=stack ";
const std::string AUTO_TAIL = "; storageClass=auto; type=int; module=@Module.0; } ";
const std::string REGISTER_HEAD = "Symbol.0{ name=\"x\"; address=reg ";
const std::string REGISTER_TAIL = " storageClass=register; type=int; module=@Module.0; } ";
const std::string TAIL = "; type=int; module=@Module.0; } ";
const std::string STATIC_TAIL = "; storageClass=static; type=int; module=@Module.0; } ";

std::string Placed(const std::string& name, const std::string& address, const std::string& tail) {
    return "Symbol.0{ name=\"" + name + "\"; address=" + address + tail;
}

const KindCase C_CASES[] = {
    {"auto", "F0 46 n'x' F1 CE 46 10 01 04", AUTO_HEAD + "4" + AUTO_TAIL},
    {"auto below the frame", "F0 46 n'x' F1 CE 46 10 01 84 FF FF FF FC",
     AUTO_HEAD + "-4" + AUTO_TAIL},
    {"auto void", "F0 46 n'x' F1 CE 46 00 01 04", "// REJECTING VOID SYMBOL x "},
    {"living register", "F0 46 n'x' F1 CE 46 10 02 82 20 07",
     REGISTER_HEAD + "0x82000003; // RH3" + REGISTER_TAIL},
    {"low byte register", "F0 46 n'x' F1 CE 46 10 02 82 20 0C",
     REGISTER_HEAD + "0x81000006; // RL6" + REGISTER_TAIL},
    {"word register ignores bit 0", "F0 46 n'x' F1 CE 46 10 02 82 10 07",
     REGISTER_HEAD + "0x80000003; // R3" + REGISTER_TAIL},
    {"locked register pair", "F0 46 n'x' F1 CE 46 10 0A 82 41 B8 00",
     REGISTER_HEAD + "0x84d0000c; // R13,R12" + REGISTER_TAIL},
    {"widest pair", "F0 46 n'x' F1 CE 46 10 0A 82 41 FE 00",
     REGISTER_HEAD + "0x84f0000f; // R15,R15" + REGISTER_TAIL},
    {"static", "F0 46 n'x' F1 CE 46 10 03 E2 CE 46 82 10 00", Placed("x", "0x1000", STATIC_TAIL)},
    {"static with memory id", "F0 46 n'x' F1 CE 46 10 03 02 E2 CE 46 82 10 00",
     Placed("x", "0x1000", STATIC_TAIL)},
    {"external function", "F0 46 n'x' F1 CE 46 10 04 01 E2 CE 46 05", ""},
    {"external variable", "F0 46 n'x' F1 CE 46 10 05 E2 CE 46 05", ""},
    {"global", "F0 46 n'x' F1 CE 46 10 08 E2 CE 46 82 20 00", Placed("x", "0x2000", TAIL)},
    {"global with omitted memory id", "F0 46 n'x' F1 CE 46 10 08 80 E2 CE 46 82 20 00",
     Placed("x", "0x2000", TAIL)},
    {"underscore", "F0 46 n'__x' F1 CE 46 10 08 E2 CE 46 01", Placed("_x", "0x1", TAIL)},
    {"based global", "F0 46 n'_12a3' F1 CE 46 10 0C 01 02 03 04 05 E2 CE 46 09",
     Placed("a3", "0x9", TAIL)},
    {"based static", "F0 46 n'12a' F1 CE 46 10 0C 01 02 00 04 05 E2 CE 46 09",
     "// REJECTING SYMBOL 12a "},
    {"constant, global", "F0 46 n'x' F1 CE 46 10 10 07 01 05", Placed("x", "0x5", TAIL)},
    {"constant, last of three values",
     "F0 46 n'x' F1 CE 46 10 10 07 01 05 06 E2 CE 46 01 E2 CE 46 02 E2 CE 46 03",
     Placed("x", "0x3", TAIL)},
    {"constant, static", "F0 46 n'x' F1 CE 46 10 10 07", "// REJECTING Static SYMBOL x "},
    {"asm symbol of a C module loses two", "F0 46 n'__x' F1 CE 46 10 13 02 01 E2 CE 46 01",
     Placed("x", "0x1", TAIL)},
    {"misc without values", "F0 46 n'x' F1 CE 46 10 3E 01 00", Placed("x", "0x0", TAIL)},
    {"misc with two", "F0 46 n'x' F1 CE 46 10 3F 01 02 E2 CE 46 04 E2 CE 46 05",
     Placed("x", "0x5", TAIL)},
    {"nameless misc", "F0 46 00 F1 CE 46 00 40 32 03 E2 CE 46 01 E2 CE 46 02 E2 CE 46 03",
     "// REJECTING SYMBOL  "},
    {"misc with a number", "F0 46 n'x' F1 CE 46 10 41 09", Placed("x", "0x0", TAIL)},
    {"unfit name", "F0 46 n'x.y' F1 CE 46 10 01 04", "// REJECTING SYMBOL x.y "},
    {"digit behind underscores", "F0 46 n'__1' F1 CE 46 10 01 04", "// REJECTING SYMBOL _1 "},
    {"no name field", "F0 46 F1 CE 46 10 01 04", "// REJECTING SYMBOL  "},
    {"40 characters keep 31",
     "F0 46 n'abcdefghijklmnopqrstuvwxyz0123456789ABCD' F1 CE 46 10 08 E2 CE 46 01",
     Placed("abcdefghijklmnopqrstuvwxyz01234", "0x1", TAIL)},
    {"parameter mark", "F0 46 n'x' F1 CE 46 10 01 04 F1 CE 46 00 3F 3B 00",
     AUTO_HEAD + "4" + AUTO_TAIL},
    {"unknown misc code", "F0 46 n'x' F1 CE 46 10 01 04 F1 CE 46 00 3F 01 00",
     AUTO_HEAD + "4" + AUTO_TAIL},
    {"names under the same index are passed, with what stands behind",
     "F0 46 n'x' F1 CE 46 10 01 04 F0 46 n'y' E5 01 F0 81 46 n'y' F1 CE 46 00 3F 3B 00",
     AUTO_HEAD + "4" + AUTO_TAIL},
    {"short index against the low byte of a long one",
     "F0 82 02 46 n'x' F1 CE 82 02 46 10 01 04 F0 46 n'y' E5 01", AUTO_HEAD + "4" + AUTO_TAIL},
    {"one lifetime gives the place",
     "F0 46 n'x' F1 CE 46 10 01 04 F1 CE 46 00 3F 46 03 E2 CE 46 20 E2 CE 46 0A E2 CE 46 82 10 06"
     "F0 46 00 F1 CE 46 00 3F 46 03 E2 CE 46 10 E2 CE 46 02 E2 CE 46 82 10 06",
     REGISTER_HEAD + "0x80000003; // R3" + REGISTER_TAIL},
    {"two lifetimes give ranges",
     "F0 46 n'x' F1 CE 46 10 01 04 F1 CE 46 00 3F 46 03 E2 CE 46 20 E2 CE 46 0A E2 CE 46 82 10 06"
     "F1 CE 46 00 3F 46 03 E2 CE 46 10 E2 CE 46 02 E2 CE 46 82 10 06"
     "F1 CE 46 00 3F 46 04 E2 CE 46 20 E2 CE 46 03 E2 CE 46 08 E2 CE 46 01",
     "Range.0{ blkbegin=0x10; blkend=0x20; info=register; value=0x80000003; // R3 } "
     "Range.1{ blkbegin=0x20; blkend=0xffffffff; value=8; info=auto; } "
     "Symbol.0{ name=\"x\"; location=@Range.0; locationCount=2; address=stack 4"
     "; storageClass=auto; type=int; module=@Module.0; } "},
};

TEST(SymbolKinds, InCModules) {
    for (const KindCase& c : C_CASES) {
        const std::string next = c.records.find("Symbol.0{") == std::string::npos ? "0" : "1";
        EXPECT_EQ(Outcome({CModule(Hex(c.bytes) + Hex(NEXT))}),
                  C_MODULE + c.records + NextSymbol(next))
            << c.what;
    }
}

const KindCase ASM_CASES[] = {
    {"line", "F0 46 00 F1 CE 46 00 07 83 01 00 02 00 E2 CE 46 82 01 00",
     "Line.0{ address=0x100; number=2; module=@Module.0; } "},
    {"name keeps its underscore", "F0 46 n'_x' F1 CE 46 10 08 E2 CE 46 01",
     Placed("_x", "0x1", TAIL)},
    {"based keeps its digits", "F0 46 n'_1x' F1 CE 46 10 0C 01 02 03 04 05 E2 CE 46 09",
     "// REJECTING SYMBOL _1x "},
    {"label without memory", "F0 46 n'x' F1 CE 46 10 13 E2 CE 46 01",
     "// REJECTING Static SYMBOL x "},
    {"static label", "F0 46 n'_x' F1 CE 46 10 13 02 E2 CE 46 01", Placed("_x", "0x1", STATIC_TAIL)},
    {"global label", "F0 46 n'_x' F1 CE 46 10 13 02 01 E2 CE 46 01", Placed("x", "0x1", TAIL)},
    {"nameless label", "F0 46 00 F1 CE 46 10 13 E2 CE 46 01", ""},
};

TEST(SymbolKinds, InAsmModules) {
    for (const KindCase& c : ASM_CASES) {
        const std::string next = c.records.find("Symbol.0{") == std::string::npos ? "0" : "1";
        EXPECT_EQ(Outcome({AsmModule(Hex(c.bytes) + Hex(NEXT))}),
                  ASM_MODULE + c.records + NextSymbol(next))
            << c.what;
    }
}

TEST(SymbolKinds, OnTriCoreRegistersStandAsTheyAre) {
    const Bytes scope = Hex("F0 46 n'x' F1 CE 46 10 02 82 20 07");
    EXPECT_EQ(Outcome({.debug = CModule(scope), .processor = "tricore"}),
              C_MODULE + REGISTER_HEAD + "0x2007;" + REGISTER_TAIL);
}

// The bytes of a scope, and the message with the offset counted from the first of them.
TEST(SymbolKinds, Faults) {
    const struct {
        const char* what;
        const char* bytes;
        std::string message;
        uint32_t at;
    } cases[] = {
        {"no index", "F0 F1", "Unexpected record at ", 0},
        {"no ATN", "F0 46 n'x' E2 CE", "Unexpected record at ", 5},
        {"other index", "F0 46 n'x' F1 CE 47 10 01 04", "Unexpected record at ", 6},
        {"no kind", "F0 46 n'x' F1 CE 46 10 E2", "Unexpected record at ", 7},
        {"unknown kind", "F0 46 n'x' F1 CE 46 10 06 01", "Unexpected record at ", 8},
        {"kind 0", "F0 46 n'x' F1 CE 46 10 00 01", "Unexpected record at ", 8},
        {"auto without offset", "F0 46 n'x' F1 CE 46 10 01 F9", "Unexpected record at ", 8},
        {"static without ASN", "F0 46 n'x' F1 CE 46 10 03 F9 00", "ASN:Unexpected record at ", 10},
        {"ASN of another index", "F0 46 n'x' F1 CE 46 10 03 E2 CE 47 01", "Unexpected record at ",
         11},
        {"ASN without value", "F0 46 n'x' F1 CE 46 10 03 E2 CE 46 F9", "Unrecognized value at ",
         11},
        {"line in a C module", "F0 46 00 F1 CE 46 00 07 01 00 E2 CE 46 05", "Unexpected record at ",
         7},
        {"misc with an ASN less", "F0 46 n'x' F1 CE 46 00 3E 01 02 E2 CE 46 05 F9 00",
         "Not ASN record = f9 at ", 16},
        {"attribute of another code", "F0 46 n'x' F1 CE 46 10 01 04 F1 C9", "Unexpected record at ",
         11},
        {"attribute of another index", "F0 46 n'x' F1 CE 46 10 01 04 F1 CE 47",
         "Unexpected record at ", 12},
        {"attribute of another kind", "F0 46 n'x' F1 CE 46 10 01 04 F1 CE 46 00 08",
         "Unexpected record at ", 14},
        {"parameter mark with values",
         "F0 46 n'x' F1 CE 46 10 01 04 F1 CE 46 00 3F 3B 01 E2 CE 46 "
         "05",
         "Unexpected record=e2 at ", 17},
        {"lifetime with two values",
         "F0 46 n'x' F1 CE 46 10 01 04 F1 CE 46 00 3F 46 02 E2 CE 46 05 E2 CE 46 01 F9 00",
         "ASN:Unexpected record at ", 26},
        {"storage class 0",
         "F0 46 n'x' F1 CE 46 10 01 04 F1 CE 46 00 3F 46 03 E2 CE 46 05 E2 CE 46 00 E2 CE 46 01 F9 "
         "00",
         "CvtTkStorageClass: unknown storage class encountered at ", 28},
        {"index of a name is no number", "F0 46 n'x' F1 CE 46 10 01 04 F0 80",
         "Unexpected record at ", 11},
        {"scope with another record", "F2", "Unexpected record=f2 at ", 0},
        {"block of another kind", "F8 0B", "Unexpected record at ", 1},
    };
    for (const auto& c : cases) {
        const Bytes scope = Hex(c.bytes) + Bytes{0x00, 0x00};
        const ScopeCase file = {CModule(scope)};
        const uint32_t begin =
            PartOffset({.processor = file.processor, .debug = file.debug}, Part::kDebug) +
            static_cast<uint32_t>(file.debug.size() - scope.size()) - 1;
        char offset[16];
        std::snprintf(offset, sizeof offset, "%x\n", begin + c.at);
        EXPECT_EQ(Outcome(file), c.message + offset) << c.what;
    }
}

}  // namespace
}  // namespace scan695::test
