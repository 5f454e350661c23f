// The whole trace of a C166 and a TriCore program from their debug parts on, their STF text with
// its debug comments, and their FST files, against golden files.
#include "tests/scopes/scope_case.h"
#include "tests/support/golden.h"

namespace scan695::test {
namespace {

void ExpectTrace(const ScopeCase& file, const std::string& golden) {
    const Converted result = ConvertScopes(file, true);
    EXPECT_EQ(result.status, 0) << result.console;
    const std::string records = result.stf.substr(result.stf.find("Module.0{"));
    const size_t begin = result.console.find("Begin of Debug Info");
    const size_t end = result.console.find("done.", begin);
    ExpectGolden(result.console.substr(begin, end - begin) + Folded(records), golden + ".txt");
    ExpectGoldenBytes(result.fst, golden + ".fst");
}

TEST(ScopeTrace, C166) {
    const uint32_t a = 0x46;
    const uint32_t b = 0x47;
    const Bytes types = NamedType(0x48, "f", 0x100, def::Function({.returns = 0x10}));
    const Bytes open = AutoVariable(0x55, "o", 0x10, 2) + LifetimeMark(0x55, 0x1009, 1, 8);
    const Bytes inner = Bb6({.stack = 2,
                             .begin = 0x1000,
                             .end = 0x100F,
                             .body = LivingRegister(0x49, "r", 0x101, 0x1018) + open});
    const Bytes behind = AutoVariable(0x56, "B", 0x10, 84) +
                         Bb6({.name = "_n", .type = 0x10, .begin = 0x1000, .end = 0x101F}) +
                         Bb6({.begin = 0x1014, .end = 0x1013});
    const Bytes body = LockedRegister(a, "_a", 0x10, 0x41B8) + ParameterMark(a) +
                       Lifetime(a, 0x1010, 0x1018, 2, 0x200C) +
                       Lifetime(a, 0x1000, 0x1010, 2, 0x41B8) + AutoVariable(b, "b", 0x10, 84) +
                       LifetimeMark(b, 0x1004, 1, 2, 5) + LifetimeMark(b, 0x1004, 9, 2, 5) +
                       LifetimeMark(b, 0x1006, 1, -4) + inner + behind;
    const Bytes scope =
        Misc(0x4A, "", 64, 50, {408, 1, 4}) +
        Bb4({.name = "_f",
             .stack = 4,
             .type = 0x100,
             .begin = 0x1000,
             .end = 0x101F,
             .body = body,
             .extra = 1}) +
        Bb4({.name = "_h", .type = 0x10, .begin = 0x80, .end = 0x83}) + open +
        GlobalVariable(0x4B, "_g", 0x10, 0x2000) + StaticVariable(0x4C, "s", 0x10, 0x2002, 7) +
        BasedVariable(0x4D, "_12v", 0x10, {1, 2, 3, 4, 5}, 0x2004) +
        Constant(0x4E, "k", 0x10, {1, 1, 9}, {}) + ExternalFunction(0x4F, "_x", 0x10, 0, 0x3000) +
        ExternalVariable(0x50, "_y", 0x10, 8);
    const uint32_t n = 0x51;
    const Bytes lines = Bb5("c:\\src\\head.h", {}) + Nn(n, "") + Line(n, 3, 0x1000) +
                        StackPoint(n, 0x1002, 2) + StackPoint(n, 0x1006, 0) + Line(n, 4, 0x1004) +
                        Line(n, 1, 0x1008) + Line(n, 4, 0x1008) + StackPoint(n, 0x5000, 2);
    const Bytes symbols = AsmSymbol(0x53, "_reset", 0x0F, 5, 2, 1) + AsmSymbol(0x54, "", 0, 1) +
                          AsmSymbol(0x57, "Two", 0x10, 9, 2) + AsmSymbol(0x58, "one", 0x10, 9, 2);
    const Bytes start =
        AsmLine(0x52, 7, 0x10) +
        Bb11({.name = "VECTORS", .kind = 1, .segment = 1, .body = symbols, .size = 4});
    // These tell segments of unknown memory what they are.
    const Bytes sections = Bb11({.name = "A", .kind = 5, .segment = 2, .n4 = 3, .n5 = 4}) +
                           Bb11({.name = "B", .kind = 2, .segment = 2}) +
                           Bb11({.name = "C", .kind = 6, .segment = 3}) +
                           Bb11({.name = "E", .kind = 3, .segment = 3}) +
                           Bb11({.name = "F", .kind = 4, .segment = 3}) +
                           Bb11({.name = "D", .kind = 0, .segment = 3}) +
                           Bb11({.name = Text(Bytes{}), .kind = Absent(), .segment = Absent()});
    ExpectTrace(
        {.debug = Bb5("x.c", Nn(n, "") + Line(n, 9, 0x50)) + Bb10("prog", {}) + Bb1("F_C", types) +
                  Bb3("F_C", scope) + Bb5("c:\\src\\f.c", lines, Numbers(1, 2, 3, 4, 5, 6)) +
                  Bb10("F_C", {}) + Bb10("start.src", start) + Bb10("sections", sections),
         .external = UseSegment(1) + PublicSymbol(32, "_f", 0x0F, 19, 0x1000, 1) +
                     PublicSymbol(33, "_reset", 0x0F, 19, 0, 6) +
                     PublicSymbol(34, "_k", 0, 16, 9, 9) + PublicSymbol(35, "d", 0x10, 8, 1) +
                     PublicSymbol(36, "_s", 0x10, 19, 2),
         .segments = Segment(1, Memory::NONE, "VECTORS", 0, 4) +
                     Segment(2, Memory::NONE, "FREE", 4, 4) +
                     Segment(3, Memory::CODE, "CODE", 8, 4),
         .data = UseSegment(1) + Load({1, 2, 3, 4})},
        "scopes/golden/c166");
}

TEST(ScopeTrace, TriCore) {
    const uint32_t a = 0x7E;  // the last short ones
    const uint32_t b = 0x7F;
    const uint32_t c = 0x80;
    // In the last block of types one reference stays open, and the type of `main` is there.
    const Bytes types = NamedType(0x81, "", 0x101, def::Function({.returns = 0x10})) +
                        NamedType(0x82, "p", 0x102, def::LargePointer(0x200));
    const uint32_t pc = 0x80000000;
    const Bytes body = AutoVariable(a, "a", 0x1A, -8) + LifetimeMark(a, pc, 2, 15) +
                       LivingRegister(b, "b", 0x10, 4) + Lifetime(b, pc + 2, pc + 6, 2, 4) +
                       Lifetime(b, pc + 6, pc + 10, 2, 4) + LockedRegister(c, "c", 0x10, 5) +
                       Lifetime(c, pc + 2, pc + 6, 2, 4) +
                       Lifetime(c, pc + 6, pc + 10, 3, 0xD0000000) +
                       LifetimeMark(c, pc + 6, 10, 7) + LifetimeMark(c, pc + 6, 2, 8);
    const Bytes scope = Bb4(
        {.name = "main", .stack = 16, .type = 0x101, .begin = pc, .end = pc + 15, .body = body});
    ExpectTrace({.debug = Bb1("m.c", {}) + Bb3("m.c", scope) + Bb5("m.c", {}) + Bb1("n.c", types),
                 .external = PublicSymbol(40, "START", 0, 16, pc),
                 .processor = "tricore"},
                "scopes/golden/tricore");
}

}  // namespace
}  // namespace scan695::test
