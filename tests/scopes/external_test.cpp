// Public symbols: those that become symbols themselves, and those that give assembler symbols their
// address.
#include <gtest/gtest.h>

#include <string>

#include "tests/scopes/scope_case.h"

namespace scan695::test {
namespace {

std::string External(const std::string& external, const Text& processor = "80166") {
    return Outcome({.debug = {}, .external = Hex(external), .processor = processor});
}

std::string SymbolText(int number, const std::string& name, const std::string& address,
                       const std::string& rest) {
    return "Symbol." + std::to_string(number) + "{ name=\"" + name + "\"; address=" + address +
           "; " + rest + "} ";
}

TEST(ExternalPart, Symbols) {
    const struct {
        const char* what;
        const char* bytes;
        std::string records;
    } cases[] = {
        {"code label", "E8 20 n'_f' F1 C9 20 0F 13 01 E2 C9 20 82 10 00",
         SymbolText(0, "f", "0x1000", "type=label; ")},
        {"one underscore goes", "E8 20 n'__f' F1 C9 20 10 08 E2 C9 20 05",
         SymbolText(0, "_f", "0x5", "storageClass=static; type=int; ")},
        {"attribute 16 is of unknown memory", "E8 20 n'k' F1 C9 20 10 10 01 E2 C9 20 05",
         "// REJECTING Static SYMBOL k "},
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
    for (const auto& c : cases) EXPECT_EQ(External(c.bytes), c.records) << c.what;
}

TEST(ExternalPart, StartAddress) {
    const std::string start = "Attrib.4{ name=\"STARTPC\"; value=\"0x1f0\"; } ";
    const std::string reset = "E8 20 n'__CSTART_TASK' F1 C9 20 00 13 01 E2 C9 20 82 01 F0";
    EXPECT_EQ(External(reset), start + SymbolText(0, "_CSTART_TASK", "0x1f0", "type=void; "));
    EXPECT_EQ(External(reset, "tri"), SymbolText(0, "_CSTART_TASK", "0x1f0", "type=void; "));
    EXPECT_EQ(External("E8 20 n'START' F1 C9 20 00 10 01 E2 C9 20 82 01 F0", "tri"),
              start + "// REJECTING Static SYMBOL START ");
    EXPECT_EQ(External("E8 20 n'START' F1 C9 20 10 08 01 E2 C9 20 82 01 F0"),
              SymbolText(0, "START", "0x1f0", "storageClass=static; type=int; "));
}

TEST(ExternalPart, Faults) {
    const struct {
        const char* what;
        const char* bytes;
        const char* message;
    } cases[] = {
        {"index 31", "E8 1F n'k' F1 C9", "Unexpected record at "},
        {"no ATI", "E8 20 n'k' F1 CE", "Unexpected record at "},
        {"other index", "E8 20 n'k' F1 C9 21", "Unexpected record at "},
        {"other attribute", "E8 20 n'k' F1 C9 20 10 09", "Unexpected record at "},
        {"other index of the value", "E8 20 n'k' F1 C9 20 10 13 E2 C9 21", "Unexpected record at "},
        {"no value", "E8 20 n'k' F1 C9 20 10 13 E2 C9 20 E8", "Unrecognized value at "},
        {"other first byte", "E6 01", "Unexpected record at "},
    };
    for (const auto& c : cases) EXPECT_TRUE(External(c.bytes).starts_with(c.message)) << c.what;
}

// What the debug part has described stays, if it is global.
TEST(ExternalPart, DebugPartGoesFirst) {
    const Bytes external = PublicSymbol(0x20, "_g", 0x10, 19, 1) +
                           PublicSymbol(0x21, "_s", 0x10, 19, 2) +
                           PublicSymbol(0x22, "f", 0x10, 19, 3);
    const Bytes scope = GlobalVariable(0x46, "_g", 0x10, 4) + StaticVariable(0x47, "_s", 0x10, 5) +
                        Bb4({.name = "_f", .type = 0x10, .begin = 6, .end = 7});
    const std::string records = Outcome({CModule(scope), external});
    EXPECT_EQ(records.substr(records.rfind("Block.")), "Block.0{ blkbegin=0x6; blkend=0x7; } " +
                                                           SymbolText(3, "s", "0x2", "type=int; ") +
                                                           SymbolText(4, "f", "0x3", "type=int; "));
}

// Label addresses of assembler symbols: in the external part, in the block behind, in their ASN.
TEST(AsmSymbols, Addresses) {
    const Bytes types = NamedType(0x46, "", 0x100, def::Function({.returns = 0x10}));
    const auto module = [&types](const Text& name, const Num& type, const Bytes& behind) {
        return CModule(AsmSymbol(0x47, name, type, 0x99, 2, 1) + behind, types);
    };
    const Bytes block = Bb4({.name = "_f", .type = 0x100, .begin = 0x10, .end = 0x1F});
    const Bytes external = PublicSymbol(0x20, "_a", 0x10, 19, 1, 1) + UseSegment(3) +
                           PublicSymbol(0x21, "_f", 0x10, 19, 2, 1) +
                           PublicSymbol(0x22, "_f", 0x10, 19, 3, 1);
    const struct {
        const char* what;
        ScopeCase file;
        const char* address;
    } cases[] = {
        {"first external entry", {module("_f", 0x100, block), external}, "0x2"},
        {"not found, no function", {module("_x", 0x10, block), external}, "0x99"},
        {"block behind", {module("_f", 0x100, block), UseSegment(1)}, "0x10"},
        {"block of another name", {module("_x", 0x100, block), UseSegment(1)}, "0x99"},
        {"block but no function type", {module("_f", 0x10, block), {}}, "0x99"},
        {"forward type", {module("_f", 0x101, block), {}}, "0x99"},
    };
    for (const auto& c : cases) {
        const std::string records = Outcome(c.file);
        const size_t at = records.find("address=") + 8;
        EXPECT_EQ(records.substr(at, records.find(';', at) - at), c.address)
            << c.what << ": " << records;
    }
}

// Each search prints the segment records from the start of the part up to its hit or its end,
// though the part is read once only; a fault stops the first search that comes to it.
TEST(AsmSymbols, SearchesOfTheExternalPart) {
    const auto searches = [](const std::vector<const char*>& names) {
        Bytes body;
        uint32_t index = 0x46;
        for (const char* name : names) body += AsmSymbol(index++, name, 0x10, 0x99, 2);
        return AsmModule(body);
    };
    const Bytes part = UseSegment(1) + PublicSymbol(0x20, "a", 0x10, 19, 0xA) + UseSegment(2) +
                       PublicSymbol(0x21, "b", 0x10, 19, 0xB);
    const struct {
        const char* what;
        std::vector<const char*> names;
        Bytes part;
        std::string trace;
    } cases[] = {
        {"hits",
         {"b", "a", "b"},
         part,
         "CurrSeg=1\nCurrSeg=2\nSymbol: b\nCurrSeg=1\nSymbol: a\nCurrSeg=1\nCurrSeg=2\nSymbol: "
         "b\n"},
        {"goes on behind the last hit",
         {"a", "x", "b"},
         part,
         "CurrSeg=1\nSymbol: a\nCurrSeg=1\nCurrSeg=2\nEnd of External Part, rec=0\nSymbol: x\n"
         "CurrSeg=1\nCurrSeg=2\nSymbol: b\n"},
        {"the same end each time",
         {"x", "x"},
         UseSegment(7),
         "CurrSeg=7\nEnd of External Part, rec=0\nSymbol: x\n"
         "CurrSeg=7\nEnd of External Part, rec=0\nSymbol: x\n"},
        {"a group without value is a quiet end",
         {"b", "c"},
         PublicSymbol(0x20, "a", 0x10, 19, 1).First(9) + part,
         "Symbol: b\nSymbol: c\n"},
        {"fault behind a hit",
         {"a", "b", "a", "c"},
         part + Bytes{0xE8, 0x1F},
         "CurrSeg=1\nSymbol: a\nCurrSeg=1\nCurrSeg=2\nSymbol: b\nCurrSeg=1\nSymbol: a\n"
         "CurrSeg=1\nCurrSeg=2\nUnexpected record at \n"},
    };
    for (const auto& c : cases) {
        const Converted result = ConvertScopes({searches(c.names), c.part}, true);
        std::string trace;
        bool in_debug_part = false;
        for (size_t at = 0; at < result.console.size();) {
            const size_t end = result.console.find('\n', at);
            const std::string line = result.console.substr(at, end - at);
            at = end + 1;
            if (line.starts_with("AsmModule")) in_debug_part = true;
            if (line.starts_with("EOB10")) break;
            if (!in_debug_part) continue;
            if (line.starts_with("Symbol: \"")) trace += "Symbol: " + line.substr(9, 1) + '\n';
            if (line.starts_with("CurrSeg") || line.starts_with("End of")) trace += line + '\n';
            if (line.starts_with("Unexpected")) trace += line.substr(0, 21) + '\n';
        }
        EXPECT_EQ(trace, c.trace) << c.what;
    }
}

}  // namespace
}  // namespace scan695::test
