// Modules, sources, lines, and the stack adjustments that stand among them.
#include <gtest/gtest.h>

#include <string>

#include "tests/scopes/scope_case.h"

namespace scan695::test {
namespace {

const std::string SOURCE = "Source.0{ path='m.c'; } Module.0{ name='m.c'; language=c; } ";

std::string LineRecord(int number, const std::string& fields) {
    return "Line." + std::to_string(number) + "{ " + fields + " module=@Module.0; } ";
}

TEST(Lines, ModulesAndSources) {
    const Bytes line1 = Nn(0x50, "") + Line(0x50, 1, 0x1000);
    const Bytes line2 = Line(0x50, 65537, 0x1002);
    const std::string lines = C_MODULE + SOURCE +
                              LineRecord(0, "address=0x1000; number=1; source=@Source.0;") +
                              LineRecord(1, "address=0x1002; number=1; source=@Source.0;");
    const struct {
        const char* what;
        Bytes debug;
        std::string records;
    } cases[] = {
        {"path and extension", Bb1("C:\\src\\main.C", {}) + Bb3("C:\\src\\main.C", {}),
         "Module.0{ name='main'; language=c; } "},
        {"point in a directory", Bb1("../src/main.c", {}) + Bb3("../src/main.c", {}),
         "Module.0{ name=''; language=c; } "},
        {"no C name", Bb2("m.src", {}) + Bb3("m.src", {}), ASM_MODULE},
        {"one name, one module; symbols go to the last one",
         Bb10("x/m.src", {}) + Bb10("b", {}) + Bb10("y\\m", GlobalVariable(0x46, "v", 0x10, 1)),
         ASM_MODULE + "Module.1{ name='b'; language=asm; } "
                      "Symbol.0{ name='v'; address=0x1; type=int; module=@Module.1; } "},
        {"40 characters keep 31", Bb10("abcdefghijklmnopqrstuvwxyz0123456789ABCD", {}),
         "Module.0{ name='abcdefghijklmnopqrstuvwxyz01234'; language=asm; } "},
        {"40 characters twice, one module",
         Bb10("abcdefghijklmnopqrstuvwxyz0123456789ABCD", {}) +
             Bb10("abcdefghijklmnopqrstuvwxyz0123456789ABCD", {}),
         "Module.0{ name='abcdefghijklmnopqrstuvwxyz01234'; language=asm; } "},
        {"BB10 head with all fields",
         Bb10("m", {}, Bytes(Text("b")) + Num(1) + Text("c") + Numbers(1, 2, 3, 4, 5, 6)),
         ASM_MODULE},
        {"BB3 without name behind an empty one", Bb1("", {}) + Bb3(Text(Bytes{}), {}),
         "Module.0{ name=''; language=asm; } "},
        {"nothing but types", Bb1("a.c", {}), ""},
        {"one inside it keeps the source",
         CModule({}) + Bb5("C:\\src/m.c", Bb5("m.h", line1) + line2, Numbers(1, 2, 3, 4, 5, 6)),
         lines},
        {"a second one too", CModule({}) + Bb5("m.c", line1) + Bb5("n.c", line2), lines},
        {"C by its source file", AsmModule({}) + Bb5("m.c", {}) + Bb10("m", AsmLine(0x46, 1, 2)),
         ASM_MODULE + SOURCE + LineRecord(0, "address=0x2; number=1;")},
        {"source without extension", AsmModule({}) + Bb5("m", {}),
         ASM_MODULE + "Source.0{ path='m'; } " + ASM_MODULE},
        {"base name of 40 characters",
         AsmModule({}) + Bb5("x/abcdefghijklmnopqrstuvwxyz0123456789.C45", {}),
         ASM_MODULE + "Source.0{ path='abcdefghijklmnopqrstuvwxyz01234'; } "
                      "Module.0{ name='abcdefghijklmnopqrstuvwxyz01234'; language=c; } "},
        {"no module, then one",
         Bb5("x.c", line1 + Bb5("y.c", {})) + CModule({}) + Bb5("m.c", line2),
         "Line.0{ address=0x1000; number=1; } " + C_MODULE + SOURCE +
             LineRecord(1, "address=0x1002; number=1; source=@Source.0;")},
    };
    for (const auto& c : cases) EXPECT_EQ(Outcome({c.debug}), c.records) << c.what;
}

// Functions f at 0x100 to 0x11F and g at 0x200 to 0x21F with a type record, h at 0x300 without; a
// nameless block inside f.
Bytes Functions() {
    const Bytes types = NamedType(0x46, "", 0x100, def::Function({.returns = 0x10}));
    const Bytes inner = Bb6({.begin = 0x108, .end = 0x10F});
    return CModule(Bb4({.name = "f", .type = 0x100, .begin = 0x100, .end = 0x11F, .body = inner}) +
                       Bb6({.name = "g", .type = 0x100, .begin = 0x200, .end = 0x21F}) +
                       Bb4({.name = "h", .type = 0x10, .begin = 0x300, .end = 0x31F}),
                   types);
}

TEST(Lines, StackAdjustments) {
    const std::string f = "Stack adjust info for function \"f\" (address 100)\n";
    const std::string missing = "**** AddStackInfo: cannot find function ";
    const struct {
        const char* what;
        std::vector<std::pair<uint32_t, uint32_t>> points;  // address and value
        std::string lines;
    } cases[] = {
        {"two ranges",
         {{0x100, 4}, {0x108, 0}, {0x110, 8}, {0x112, 0}},
         f + "  0: from 100 to 108: adjust value=4\n  1: from 110 to 112: adjust value=8\n"},
        {"the second opening wins; an even count opens with 0 too",
         {{0x100, 4}, {0x102, 8}, {0x104, 0}, {0x106, 0}},
         f + "  0: from 104 to 106: adjust value=0\n"},
        {"an open range is lost",
         {{0x100, 4}, {0x108, 0}, {0x110, 8}},
         f + "  0: from 100 to 108: adjust value=4\n"},
        {"another function attaches, an empty list too",
         {{0x100, 4}, {0x21F, 4}, {0x21F, 0}},
         f + "Stack adjust info for function \"g\" (address 200)\n"
             "  0: from 21f to 21f: adjust value=4\n"},
        {"outside",
         {{0x120, 4}, {0x100, 0}, {0xFF, 9}, {0x102, 0}},
         missing + "block for address 120\n" + missing + "block for address ff\n" + f +
             "  0: from 100 to 102: adjust value=0\n"},
        {"no function type", {{0x300, 4}, {0x302, 0}}, missing + "for address 300\n"},
        {"nothing complete", {{0x100, 4}}, ""},
    };
    for (const auto& c : cases) {
        Bytes body = Nn(0x50, "");
        for (const auto& [address, value] : c.points) body += StackPoint(0x50, address, value);
        const Converted result = ConvertScopes({Functions() + Bb5("m.c", body)}, true);
        EXPECT_EQ(result.status, 0) << c.what;
        EXPECT_EQ(LinesThatBegin(result.console, {"Stack adjust", "  0:", "  1:", "**** Add"}),
                  c.lines)
            << c.what;
    }
}

// A type of -1 closes the list as the end of a module does; the adjustment itself stays in force.
TEST(Lines, StackAdjustmentOfTypeMinus1) {
    const Bytes close = Atn(0x50, 0, 64, 51, 3) + Asn(0x50, 1) + Asn(0x50, 6) + Asn(0x50, -1);
    const Bytes body = StackPoint(0x50, 0x100, 4) + StackPoint(0x50, 0x102, 0) + close;
    const Converted result = ConvertScopes(
        {Functions() + Bb5("m.c", body) + Bb10("z", AutoVariable(0x46, "v", 0x10, 2))}, true);
    EXPECT_EQ(LinesThatBegin(result.console, {"Stack adjust", "EOB5"}),
              "Stack adjust info for function \"f\" (address 100)\nEOB5:End of Module\n");
    EXPECT_NE(Records(result).find("// ADJUSTING STACK FOR v 6 address=stack 8;"),
              std::string::npos);
}

}  // namespace
}  // namespace scan695::test
