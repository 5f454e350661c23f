// Functions and inner blocks, assembled modules and their sections, lifetimes that end with a
// block.
#include <gtest/gtest.h>

#include <string>

#include "tests/scopes/scope_case.h"

namespace scan695::test {
namespace {

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(Blocks, FunctionsNest) {
    const Bytes inner =
        Bb6({.stack = 2, .begin = 0x1008, .end = 0x100F, .body = AutoVariable(0x48, "b", 0x10, 0)});
    const Bytes named =
        Bb6({.name = "_g", .stack = 0, .type = 0x10, .begin = 0x1010, .end = 0x1013});
    const Bytes function = Bb4({.name = "_f",
                                .stack = 4,
                                .type = 0x10,
                                .begin = 0x1000,
                                .end = 0x101F,
                                .body = AutoVariable(0x47, "_a", 0x10, 2) + inner +
                                        AutoVariable(0x49, "c", 0x10, 2) + named});
    const std::string records = Outcome({CModule(function + GlobalVariable(0x4A, "v", 0x10, 5))});
    EXPECT_EQ(records, C_MODULE +
                           "Block.0{ module=@Module.0; } "
                           "Symbol.0{ name=\"_f\"; address=0x1000; type=int; module=@Module.0; } "
                           "Symbol.1{ name=\"a\"; // ADJUSTING STACK FOR a 4 address=stack 6; "
                           "storageClass=auto; type=int; module=@Module.0; block=@Block.0; } "
                           "Block.1{ parent=@Block.0; module=@Module.0; } "
                           "Symbol.2{ name=\"b\"; // ADJUSTING STACK FOR b 2 address=stack 2; "
                           "storageClass=auto; type=int; module=@Module.0; block=@Block.1; } "
                           "Block.1{ blkbegin=0x1008; blkend=0x100f; } "
                           "Symbol.3{ name=\"c\"; address=stack 2; storageClass=auto; type=int; "
                           "module=@Module.0; block=@Block.0; } "
                           "Block.2{ parent=@Block.0; module=@Module.0; } "
                           "Symbol.4{ name=\"_g\"; address=0x1010; storageClass=static; type=int; "
                           "module=@Module.0; } "
                           "Block.2{ blkbegin=0x1010; blkend=0x1013; } "
                           "Block.0{ blkbegin=0x1000; blkend=0x101f; } "
                           "Symbol.5{ name=\"v\"; address=0x5; type=int; module=@Module.0; } ");
}

Bytes NestedBlocks(int depth) {
    Bytes block;
    for (int i = 0; i < depth; ++i) block = Bb6({.begin = 0, .end = 1, .body = block});
    return block;
}

TEST(Blocks, ThousandLevels) {
    EXPECT_EQ(ConvertScopes({CModule(NestedBlocks(1000))}).status, 0);
    EXPECT_TRUE(Outcome({CModule(NestedBlocks(1001))}).starts_with("Nesting too deep at "));
}

// An open lifetime gets the end of its own block, in the database; an inner block goes first.
// Blocks without one of their own check nothing.
TEST(Blocks, OpenLifetimesEndWithTheirBlock) {
    const auto open_variable = [](uint32_t index, const char* name) {
        return AutoVariable(index, name, 0x10, 0) + LifetimeMark(index, 0x20, 1, 8);
    };
    const Bytes inner = Bb6({.begin = 0x20, .end = 0x2F, .body = open_variable(0x48, "b")});
    const Bytes quiet = Bb6({.begin = 0x30, .end = 0x33, .body = AutoVariable(0x49, "q", 0x10, 0)});
    const Bytes function = Bb4({.name = "f",
                                .type = 0x10,
                                .begin = 0x10,
                                .end = 0x3F,
                                .body = open_variable(0x47, "a") + inner + quiet});
    const Converted result = ConvertScopes({CModule(function + open_variable(0x4A, "m"))}, true);
    EXPECT_EQ(LinesThatBegin(result.console,
                             {"  checking", "   updating", "Symbol:", "Block end", "Function end"}),
              "Symbol: \"a\" addr=00000000 mem=2 type=6(16), sc=2(1)\n"
              "Symbol: \"b\" addr=00000000 mem=2 type=6(16), sc=2(1)\n"
              "Block end: addr=2F, size=10, nof_symbols=1\n"
              "  checking symbol: addr=0, sc=2, tidx=6\n"
              "   updating LOCINFO ending address=2f\n"
              "Symbol: \"q\" addr=00000000 mem=2 type=6(16), sc=2(1)\n"
              "Block end: addr=33, size=4, nof_symbols=1\n"
              "Function end: addr=3F, size=30, nof_symbols=3\n"
              "  checking symbol: addr=0, sc=2, tidx=6\n"
              "   updating LOCINFO ending address=3f\n"
              "  checking symbol: addr=0, sc=2, tidx=6\n"
              "  checking symbol: addr=0, sc=2, tidx=6\n"
              "Symbol: \"m\" addr=00000000 mem=2 type=6(16), sc=2(1)\n");
    EXPECT_TRUE(Contains(Records(result), "// locp[l].end_address=0xffffffff;"));
}

// A list above 65,535 bytes is cut when it is stored: behind 4,095 locations the count and the
// place no longer agree, and the block's end looks for the last one where it is not.
TEST(Blocks, MoreLifetimesThanAnItemHolds) {
    const struct {
        uint32_t ranges;
        const char* message;
    } cases[] = {
        {4095, nullptr},
        {4096, "Error: cannot read temporary buffer\n"},
        {65536, "Error: cannot read temporary buffer\n"},
    };
    for (const auto& c : cases) {
        Bytes marks = LifetimeMark(0x47, 16 * c.ranges, 1, 2);  // the last one has no end
        for (uint32_t i = 1; i < c.ranges; ++i) marks += Lifetime(0x47, 16 * i, 16 * i + 4, 1, 2);
        const Bytes function = Bb4({.name = "f",
                                    .type = 0x10,
                                    .end = 0x3F,
                                    .body = AutoVariable(0x47, "a", 0x10, 0) + marks});
        const std::string outcome = Outcome({CModule(function)});
        if (c.message != nullptr)
            EXPECT_EQ(outcome, c.message) << c.ranges;
        else
            EXPECT_TRUE(Contains(outcome, "locationCount=4095;")) << c.ranges;
    }
}

TEST(Blocks, Modules) {
    const struct {
        const char* what;
        Bytes debug;
        std::string outcome;
    } cases[] = {
        {"path and extension", Bb1("C:\\src\\main.C", {}) + Bb3("C:\\src\\main.C", {}),
         "Module.0{ name=\"main\"; language=c; } "},
        {"point in a directory", Bb1("../src/main.c", {}) + Bb3("../src/main.c", {}),
         "Module.0{ name=\"\"; language=c; } "},
        {"no C name", Bb2("a.src", {}) + Bb3("a.src", {}),
         "Module.0{ name=\"a\"; language=asm; } "},
        {"one name, one module", Bb10("x/a.src", {}) + Bb10("y\\a", {}) + Bb10("b", {}),
         "Module.0{ name=\"a\"; language=asm; } Module.1{ name=\"b\"; language=asm; } "},
        {"symbols of a known module go to the last one",
         Bb10("a", {}) + Bb10("b", {}) + Bb10("a", GlobalVariable(0x46, "v", 0x10, 1)),
         "Module.0{ name=\"a\"; language=asm; } Module.1{ name=\"b\"; language=asm; } "
         "Symbol.0{ name=\"v\"; address=0x1; type=int; module=@Module.1; } "},
        {"40 characters keep 31", Bb10("abcdefghijklmnopqrstuvwxyz0123456789ABCD", {}),
         "Module.0{ name=\"abcdefghijklmnopqrstuvwxyz01234\"; language=asm; } "},
        {"BB10 head with all fields",
         Bb10("a", {}, Bytes(Text("b")) + Num(1) + Text("c") + Numbers(1, 2, 3, 4, 5, 6)),
         "Module.0{ name=\"a\"; language=asm; } "},
        {"BB3 without name behind an empty one", Bb1("", {}) + Bb3(Text(Bytes{}), {}),
         "Module.0{ name=\"\"; language=asm; } "},
        {"nothing but types", Bb1("a.c", {}), ""},
    };
    for (const auto& c : cases) EXPECT_EQ(Outcome({c.debug}), c.outcome) << c.what;

    EXPECT_TRUE(Outcome({Bb3("m.c", {})}).starts_with("Unexpected record at "));
    EXPECT_TRUE(Outcome({Bb1("n.c", {}) + Bb3("m.c", {})}).starts_with("Unexpected record at "));
    EXPECT_TRUE(Outcome({Bb10("m.c", {}) + Bb3("m.c", {})}).starts_with("Unexpected record at "));
    EXPECT_TRUE(Outcome({{0xF8, 0x04}}).starts_with("Unexpected record at "));
}

// Section blocks tell segments of unknown memory what they are.
TEST(Blocks, SectionsTeachSegments) {
    const Bytes segments =
        Segment(1, Memory::kCode, "CODE", 0, 4) + Segment(2, Memory::kNone, "FREE", 4, 4);
    const Bytes body = Bb11({.name = "A",
                             .kind = 5,
                             .segment = 2,
                             .n4 = 3,
                             .n5 = 4,
                             .body = GlobalVariable(0x46, "v", 0x10, 1)}) +
                       Bb11({.name = "B", .kind = 2, .segment = 2}) +
                       Bb11({.name = "C", .kind = 6, .segment = 1}) +
                       Bb11({.name = Text(Bytes{}), .kind = Absent(), .segment = Absent()});
    const Converted result = ConvertScopes({.debug = AsmModule(body), .segments = segments}, true);
    EXPECT_EQ(LinesThatBegin(result.console, {"Block BB11", "**** "}),
              "Block BB11[A]: n2=5, n3=2, n4=3, n5=4\n"
              "Block BB11[B]: n2=2, n3=2, **** cur_mem_type=0, mem_type=2 ****  n4=0, n5=0\n"
              "Block BB11[C]: n2=6 **** UNKNOWN **** , n3=1, **** cur_mem_type=0, mem_type=6 ****  "
              "n4=0, n5=0\n"
              "Block BB11[C]: n2=0, n3=0,**** GetSegmentMemType: inv seg=0\n"
              "**** SetSegmentMemType: inv seg=0\n");
    EXPECT_EQ(result.status, 0);
}

TEST(Blocks, Faults) {
    const struct {
        const char* what;
        const char* bytes;  // of a module's scope
        const char* message;
    } cases[] = {
        {"no stack size", "F8 04 05 n'f' F9", "Unexpected record=0 at "},
        {"no type", "F8 04 05 n'f' 00 F9", "Unexpected record at "},
        {"no end", "F8 04 05 n'f' 00 10 10 F9 F9", "Unexpected record at "},
        {"function inside a function", "F8 04 05 n'f' 00 10 10 F8 04", "Unexpected record at "},
        {"other record inside a function", "F8 04 05 n'f' 00 10 10 E2", "Unexpected record at "},
        {"other record inside a module", "E2", "Unexpected record=e2 at "},
        {"no length", "F8 04 F9", "Unexpected record at "},
    };
    for (const auto& c : cases)
        EXPECT_TRUE(Outcome({CModule(Hex(c.bytes))}).starts_with(c.message)) << c.what;
}

}  // namespace
}  // namespace scan695::test
