// Public symbols: those that become symbols themselves, and those that give assembler symbols their
// address.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/scopes/scope_case.h"

namespace scan695::test {
namespace {

std::string SymbolText(int number, const std::string& name, const std::string& address,
                       const std::string& rest) {
    return "Symbol." + std::to_string(number) + "{ name='" + name + "'; address=" + address + "; " +
           rest + "} ";
}

TEST(ExternalPart, Symbols) {
    const std::string reset = "E8 20 n'__CSTART_TASK' F1 C9 20 00 13 01 E2 C9 20 82 01 F0";
    const std::string reset_symbol = SymbolText(0, "_CSTART_TASK", "0x1f0", "type=void; ");
    const struct {
        const char* what;
        std::string bytes;
        std::string records;
        Text processor = "80166";
    } cases[] = {
        {"start address", reset, "Attrib.4{ name='STARTPC'; value='0x1f0'; } " + reset_symbol},
        {"start address of another processor", reset, reset_symbol, "tri"},
        {"another processor's", "E8 20 n'START' F1 C9 20 10 08 01 E2 C9 20 82 01 F0",
         SymbolText(0, "START", "0x1f0", "storageClass=static; type=int; ")},
        {"one underscore goes", "E8 20 n'__f' F1 C9 20 10 08 E2 C9 20 05",
         SymbolText(0, "_f", "0x5", "storageClass=static; type=int; ")},
        {"attribute 20", "E8 20 n'k' F1 C9 20 10 14 01 E2 C9 20 05",
         SymbolText(0, "k", "0x5", "storageClass=static; type=int; ")},
        {"empty name", "E8 20 n'_' F1 C9 20 10 13 01 E2 C9 20 05", "// REJECTING SYMBOL  "},
        {"the second of a name goes",
         "E5 01 E8 20 n'_f' F1 C9 20 10 13 E2 C9 20 05 E8 21 n'f' F1 C9 21 10 13 E2 C9 21 06",
         SymbolText(0, "f", "0x5", "type=int; ")},
        {"without an ASI record two bytes are passed",
         "E8 20 n'k' F1 C9 20 10 13 01 E5 02 E8 21 n'g' F1 C9 21 10 13 01 E2 C9 21 06",
         SymbolText(0, "g", "0x6", "type=int; ")},
        {"three numbers behind an attribute end the part",
         "E8 20 n'k' F1 C9 20 10 10 01 02 03 E2 C9 20 05 E8 21 n'g' F1 C9 21 10 13 01 E2 C9 21 06",
         ""},
        {"segments only", "E5 01 E5 02", ""},
        {"a name that does not come is the one before",
         "E8 20 n'_f' F1 C9 20 10 13 01 E5 02 E8 21 F1 C9 21 10 13 01 E2 C9 21 06",
         SymbolText(0, "f", "0x6", "type=int; ")},
        {"32 characters are looked up and 31 stored, so both are there",
         "E8 20 n'abcdefghijklmnopqrstuvwxyz012345' F1 C9 20 10 13 01 E2 C9 20 01"
         "E8 21 n'abcdefghijklmnopqrstuvwxyz012345' F1 C9 21 10 13 01 E2 C9 21 02"
         "E8 22 n'abcdefghijklmnopqrstuvwxyz01234' F1 C9 22 10 13 01 E2 C9 22 03",
         SymbolText(0, "abcdefghijklmnopqrstuvwxyz01234", "0x1", "type=int; ") +
             SymbolText(1, "abcdefghijklmnopqrstuvwxyz01234", "0x2", "type=int; ")},
    };
    for (const auto& c : cases) {
        const ScopeCase file = {.debug = {}, .external = Hex(c.bytes), .processor = c.processor};
        EXPECT_EQ(Outcome(file), c.records) << c.what;
    }
}

// An assembler symbol that the external part does not give has the address of the function block
// behind it.
TEST(AsmSymbols, AddressOfTheBlockBehind) {
    const Bytes types = NamedType(0x46, "", 0x100, def::Function({.returns = 0x10})) +
                        NamedType(0x47, "", 0x101, def::SmallPointer(0x10));
    const Bytes block = Bb4({.name = "_f", .type = 0x100, .begin = 0x10, .end = 0x1F});
    const Bytes static_block = Bb6({.name = "_g", .type = 0x100, .begin = 0x20, .end = 0x2F});
    const struct {
        const char* name;
        uint32_t type;
        Bytes external;
        const char* records;
    } cases[] = {{"_f", 0x100, UseSegment(1), "name='f'; address=0x10;"},
                 {"_f", 0x100, PublicSymbol(0x20, "_f", 0x10, 19, 2), "name='f'; address=0x2;"},
                 {"_x", 0x100, UseSegment(1), "name='x'; address=0x99;"},
                 {"_g", 0x100, UseSegment(1), "name='g'; address=0x20;"},
                 {"_f", 0x101, UseSegment(1), "name='f'; address=0x99;"}};
    for (const auto& c : cases) {
        const Bytes symbol = AsmSymbol(0x47, c.name, c.type, 0x99, 2, 1);
        const Bytes scope = symbol + (c.name == std::string("_g") ? static_block : block);
        const std::string records = Outcome({CModule(scope, types), c.external});
        EXPECT_NE(records.find(c.records), std::string::npos) << records;
    }
}

// Each search prints the segment records from the start of the part up to its hit or its end,
// though the part is read once only; a fault stops the first search that comes to it.
TEST(AsmSymbols, SearchesOfTheExternalPart) {
    const Bytes part = UseSegment(1) + PublicSymbol(0x20, "a", 0x10, 19, 0xA) + UseSegment(2) +
                       PublicSymbol(0x21, "b", 0x10, 19, 0xB) +
                       PublicSymbol(0x22, "a", 0x10, 19, 0xC);
    const struct {
        const char* what;
        std::vector<const char*> names;
        Bytes part;
        std::string trace;  // segments; names with their addresses
    } cases[] = {
        {"hits", {"b", "a", "b"}, part, "1 2 b0B 1 a0A 1 2 b0B "},
        {"on behind the last hit", {"a", "x", "b", "a"}, part, "1 a0A 1 2 end x99 1 2 b0B 1 a0A "},
        {"the same end each time", {"x", "x"}, UseSegment(7), "7 end x99 7 end x99 "},
        {"no record at all", {"x"}, {0xE6}, "Unexpected "},
        {"a group without value is a quiet end",
         {"b", "c"},
         PublicSymbol(0x20, "a", 0x10, 19, 1).First(9) + part,
         "b99 c99 "},
        {"fault behind a hit",
         {"a", "b", "a", "c"},
         part + PublicSymbol(0x1F, "c", 0x10, 19, 0xC),
         "1 a0A 1 2 b0B 1 a0A 1 2 Unexpected "},
    };
    for (const auto& c : cases) {
        Bytes body;
        uint32_t index = 0x46;
        for (const char* name : c.names) body += AsmSymbol(index++, name, 0x10, 0x99, 2);
        const std::string console = ConvertScopes({AsmModule(body), c.part}, true).console;
        std::istringstream lines(console.substr(0, console.find("EOB10")));
        std::string trace;
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("CurrSeg=")) trace += line.substr(8) + ' ';
            if (line.starts_with("Symbol: \"")) trace += line[9] + line.substr(23, 3);
            if (line.starts_with("End of External")) trace += "end ";
            if (line.starts_with("Unexpected ")) trace += "Unexpected ";
        }
        EXPECT_EQ(trace, c.trace) << c.what;
    }
}

// More names than the indexes have room for at first: each assembler symbol finds its own, and each
// public symbol is kept once.
TEST(ExternalPart, ManyNames) {
    constexpr int COUNT = 300;
    Bytes body;
    Bytes external;
    std::string local;
    std::string global;
    for (int i = 0; i < COUNT; ++i) {
        const std::string name = "a" + std::to_string(i);
        const std::string address = "0x" + std::to_string(i % 10);
        body += AsmSymbol(0x46 + i, name, 0x10, 0x99, 2);
        external += PublicSymbol(0x20, name, 0x10, 19, i % 10);
        local += SymbolText(i, name, address, "storageClass=static; type=int; module=@Module.0; ");
        global += SymbolText(COUNT + i, name, address, "type=int; ");
    }
    EXPECT_EQ(Outcome({AsmModule(body), external + external}), ASM_MODULE + local + global);
}

}  // namespace
}  // namespace scan695::test
