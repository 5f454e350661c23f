// Functions and inner blocks, sections of assembled modules, lifetimes that end with a block;
// damaged scopes.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "tests/scopes/scope_case.h"

namespace scan695::test {
namespace {

TEST(Blocks, FunctionsNest) {
    const Bytes inner =
        Bb6({.stack = 2, .begin = 8, .end = 15, .body = AutoVariable(0x48, "b", 0x10, 0)});
    const Bytes body = AutoVariable(0x47, "_a", 0x10, 2) + inner +
                       AutoVariable(0x49, "c", 0x10, 2) +
                       Bb6({.name = "_g", .type = 0x10, .begin = 16, .end = 17});
    const Bytes function =
        Bb4({.name = "_f", .stack = 4, .type = 0x10, .begin = 1, .end = 31, .body = body});
    EXPECT_EQ(Outcome({CModule(function + GlobalVariable(0x4A, "v", 0x10, 5))}),
              C_MODULE +
                  "Block.0{ module=@Module.0; } "
                  "Symbol.0{ name='_f'; address=0x1; type=int; module=@Module.0; } "
                  "Symbol.1{ name='a'; // ADJUSTING STACK FOR a 4 address=stack 6; "
                  "storageClass=auto; type=int; module=@Module.0; block=@Block.0; } "
                  "Block.1{ parent=@Block.0; module=@Module.0; } "
                  "Symbol.2{ name='b'; // ADJUSTING STACK FOR b 2 address=stack 2; "
                  "storageClass=auto; type=int; module=@Module.0; block=@Block.1; } "
                  "Block.1{ blkbegin=0x8; blkend=0xf; } "
                  "Symbol.3{ name='c'; address=stack 2; storageClass=auto; type=int; "
                  "module=@Module.0; block=@Block.0; } "
                  "Block.2{ parent=@Block.0; module=@Module.0; } "
                  "Symbol.4{ name='_g'; address=0x10; storageClass=static; type=int; "
                  "module=@Module.0; } "
                  "Block.2{ blkbegin=0x10; blkend=0x11; } Block.0{ blkbegin=0x1; blkend=0x1f; } "
                  "Symbol.5{ name='v'; address=0x5; type=int; module=@Module.0; } ");
}

// An open lifetime gets the end of its own block, in the database; an inner block goes first.
// Blocks without one of their own check nothing.
TEST(Blocks, OpenLifetimesEndWithTheirBlock) {
    const auto open_variable = [](uint32_t index, const char* name) {
        return AutoVariable(index, name, 0x10, 0) + LifetimeMark(index, 0x20, 1, 8);
    };
    const Bytes body = open_variable(0x47, "a") +
                       Bb6({.begin = 0x20, .end = 0x2F, .body = open_variable(0x48, "b")}) +
                       Bb6({.end = 0x33, .body = AutoVariable(0x49, "q", 0x10, 0)});
    const Bytes function = Bb4({.name = "f", .type = 0x10, .end = 0x3F, .body = body});
    const Converted result = ConvertScopes({CModule(function + open_variable(0x4A, "m"))}, true);
    EXPECT_EQ(
        LinesThatBegin(result.console, {"  checking", "   updating", "Block end", "Function end"}),
        "Block end: addr=2F, size=10, nof_symbols=1\n"
        "  checking symbol: addr=0, sc=2, tidx=6\n"
        "   updating LOCINFO ending address=2f\n"
        "Block end: addr=33, size=34, nof_symbols=1\n"
        "Function end: addr=3F, size=40, nof_symbols=3\n"
        "  checking symbol: addr=0, sc=2, tidx=6\n"
        "   updating LOCINFO ending address=3f\n"
        "  checking symbol: addr=0, sc=2, tidx=6\n"
        "  checking symbol: addr=0, sc=2, tidx=6\n");
}

// A list above 65,535 bytes is cut when it is stored: behind 4,095 locations the count and the
// place no longer agree, and the block's end looks for the last one where it is not.
TEST(Blocks, MoreLifetimesThanAnItemHolds) {
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

// Section blocks tell segments of unknown memory what they are.
TEST(Blocks, SectionsTeachSegments) {
    const Bytes segments =
        Segment(1, Memory::kCode, "CODE", 0, 4) + Segment(2, Memory::kNone, "FREE", 4, 4);
    const Bytes body = Bb11({.name = "A", .kind = 5, .segment = 2, .n4 = 3, .n5 = 4}) +
                       Bb11({.name = "B", .kind = 2, .segment = 2}) +
                       Bb11({.name = "C", .kind = 6, .segment = 1}) +
                       Bb11({.name = "D", .kind = 0, .segment = 1}) +
                       Bb11({.name = Text(Bytes{}), .kind = Absent(), .segment = Absent()});
    const Converted result = ConvertScopes({.debug = AsmModule(body), .segments = segments}, true);
    EXPECT_EQ(LinesThatBegin(result.console, {"Block BB11", "**** "}),
              "Block BB11[A]: n2=5, n3=2, n4=3, n5=4\n"
              "Block BB11[B]: n2=2, n3=2, **** cur_mem_type=0, mem_type=2 ****  n4=0, n5=0\n"
              "Block BB11[C]: n2=6 **** UNKNOWN **** , n3=1, **** cur_mem_type=0, mem_type=6 ****  "
              "n4=0, n5=0\n"
              "Block BB11[D]: n2=0, n3=1, n4=0, n5=0\n"
              "Block BB11[D]: n2=0, n3=0,**** GetSegmentMemType: inv seg=0\n"
              "**** SetSegmentMemType: inv seg=0\n");
}

// Damaged scopes, as far as they are not among the fatal cases of the whole library.
const std::string SCOPE = "F8 01 00 n'm.c' F9 F8 03 00 n'm.c' ";
const std::string SYMBOL = SCOPE + "F0 46 n'x' F1 CE 46 10 ";
const std::string MARK = SYMBOL + "01 04 F1 CE 46 00 3F ";
const std::string LINES = "F8 05 00 n'm.c' ";
const std::string PUBLIC = "E8 20 n'k' F1 C9 ";

TEST(Scopes, Faults) {
    const struct {
        const char* what;
        std::string bytes;  // up to the last one that is read
        std::string message = "Unexpected record at ";
        std::string rest = "F9";
    } cases[] = {
        {"name of an assembled module",
         "F8 0A 00 n'm.c' 00 00 00 00 00 00 00 00 00 F9 F8 03 00 n'm.c'"},
        {"no index", SCOPE + "F0"},
        {"no ATN", SCOPE + "F0 46 n'x' E2 CE", "Unexpected record at ", "46"},
        {"other index", SCOPE + "F0 46 n'x' F1 CE 47"},
        {"line in a C module", SYMBOL + "07", "Unexpected record at ", "01"},
        {"attribute of another code", SYMBOL + "01 04 F1 C9", "Unexpected record at ", "46"},
        {"attribute of another index", SYMBOL + "01 04 F1 CE 47"},
        {"mark with values", MARK + "3B 01 E2", "Unexpected record=e2 at "},
        {"two values", MARK + "46 02 E2 CE 46 05 E2 CE 46 01 F9 00", "ASN:Unexpected record at "},
        {"no length", SCOPE + "F8 04"},
        {"no type", SCOPE + "F8 04 05 n'f' 00"},
        {"no end", SCOPE + "F8 04 05 n'f' 00 10 10 F9"},
        {"other record in a function", SCOPE + "F8 04 05 n'f' 00 10 10 E2"},
        {"four values", LINES + "F1 CE 50 00 40 33 04 E2 CE 50 01 E2 CE 50 02 E2",
         "Unexpected record=e2 at "},
        {"no address", LINES + "F1 CE 50 00 07 01 00 F9 00", "ASN:Unexpected record at "},
        {"other index of a public symbol", PUBLIC + "21"},
        {"other index of its value", PUBLIC + "20 10 13 E2 C9 21"},
    };
    for (const auto& c : cases) {
        const Bytes read = Hex(c.bytes);
        const bool external = c.bytes.starts_with("E8");
        ScopeCase file;
        (external ? file.external : file.debug) = read + Hex(c.rest);
        const Part part = external ? Part::kExternal : Part::kDebug;
        const uint32_t begin = PartOffset({.external = file.external, .debug = file.debug}, part);
        char offset[16];
        std::snprintf(offset, sizeof offset, "%x\n",
                      begin + static_cast<uint32_t>(read.size()) - 1);
        EXPECT_EQ(Outcome(file), c.message + offset) << c.what;
    }
}

}  // namespace
}  // namespace scan695::test
