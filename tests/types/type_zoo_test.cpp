// Types of every kind through Convert: the whole STF text for each processor, the trace of the
// debug part and the FST file for one; limits of a block of types.
#include <map>
#include <set>
#include <sstream>

#include "tests/support/golden.h"
#include "tests/support/test.h"

namespace scan695::test {
namespace {

using namespace def;

struct ZooType {
    const char* name;
    uint32_t tk_ti;
    TypeDef definition;
};

Bytes TypeBlock(const char* module, Indexes& index, const std::vector<ZooType>& types) {
    Bytes body;
    for (const ZooType& type : types)
        body += NamedType(index(), type.name, type.tk_ti, type.definition);
    return Bb1(module, body);
}

// At the end of each line the numbers that the type takes.
std::vector<ZooType> Zoo() {
    return {
        {"bit", 256, Bitfield(0, 1)},                                               // none
        {"u3", 257, Bitfield(0, 3)},                                                // 100
        {"s5", 258, Bitfield(1, 5)},                                                // 101
        {"near", 259, SmallPointer(2)},                                             // 102
        {"far", 260, LargePointer(259)},                                            // 103
        {"row", 261, Array(16, 9)},                                                 // 104
        {"open", 262, Array(260, -1)},                                              // 105
        {"flags", 263, Struct(4, {{"a", 257, 0}, {"b", 258, 3}, {"c", 257, 16}})},  // 106 to 109
        {"mixed", 264, Struct(4, {{"a", 257, 0}, {"b", 258, 3}, {"n", 3, 3}})},     // 110 to 112
        {"word", 265, Union(4, {{"w", 5, 0}, {"row", 261, 0}})},                    // 113
        {"colour", 266, Enum({{"RED", 0}, {"GREEN", -1}}, EnumSize(2))},            // 114
        {"plain", 267, Enum({{"ON", 1}})},                                          // 115
        {"alias", 268, Typedef(5)},                                                 // none
        {"flags_t", 269, Typedef(263)},                                             // 116
        {"ro", 270, PointerAttribute(3, 0, 1)},                                     // 117
        {"ro_p", 271, SmallPointer(270)},                                           // 118
        {"vol", 272, Qualified(0x85, 271)},                                         // 119
        {"vec", 273, Array(272, 3)},                                                // 120
        {"main", 274, Function({.returns = 16, .attributes = 0x48})},               // 121
        {"empty", 275, Struct(0, {}, {})},                                          // 122
        {"other", 276, TypeDef(268)},                                               // none
        {"user", 277, OtherTypedef(276)},                                           // none
        {"call", 278,  // 123, and 124 in front of it for its second parameter
         Function({.parameters = {268, LargePointer(2)}, .attributes = 0x2A})},
    };
}

std::vector<ZooType> ForwardReferences() {
    return {
        {"p", 256, SmallPointer(300)},                                     // 125
        {"vector", 257, Array(301, 1)},                                    // 126
        {"late", 258, Struct(2, {{"n", 256, 0}, {"x", 302, 12}})},         // 127
        {"f", 259, Function({.returns = 300, .parameters = {301, 303}})},  // 128
        {"copy", 260, Typedef(258)},                                       // 129
        {"node", 300, Struct(4, {{"next", LargePointer(300), 0}})},        // 130 and 131
        {"w", 301, Qualified(1, 7)},                                       // 132
        {"u2", 302, Bitfield(1, 2)},                                       // 133, its member 134
        {"never", 261, SmallPointer(305)},                                 // 135
        {"lost", 262, OtherTypedef(304)},                                  // 136, without a record
        {"behind", 263, LargePointer(262)},                                // 137
    };
}

// What the sizes of arrays and of symbols depend on, and enumerations of all forms.
std::vector<ZooType> Sizes() {
    std::vector<ZooType> types = {
        {"", 256, Array(Array(16, 9), 1)},
        {"", 257, Array(Struct(6, {}), 1)},
        {"", 258, Array(Union(7, {}), 1)},
        {"", 259, Array(Enum({{"A", 1}}, EnumSize(2)), 1)},
        {"", 260, Array(Bitfield(1, 3), 1)},
        {"", 261, Array(Function({.father = 0}), 1)},
        {"", 262, Array(Qualified(1, 256), 1)},
        {"", 263, Struct(6, {})},
        {"", 264, Union(7, {})},
        {"", 265, TypeDef(Hex("'N' 80 n'A' 03 00"))},
        {"", 266, TypeDef(Hex("'N' 00 01 00 04 n'A' 07"))},
        {"", 267, TypeDef(Hex("'N' n'A' 80 n'B' 03 n'C'"))},
        {"", 268, Function({})},
    };
    for (uint32_t i = 0; i < 9; ++i) types.push_back({"", 270 + i, Qualified(16 * i, 16)});
    types.push_back({"", 279, Qualified(0x60, 275)});
    types.push_back({"", 280, SmallPointer(0)});
    return types;
}

// Of lines that come again the first, and how many there are; without the two lines in front of
// each "ScanType", which repeat its number.
std::string EachLineOnce(const std::string& trace) {
    std::istringstream lines(trace);
    std::set<std::string> seen;
    std::string text, line;
    size_t count = 0;
    for (; std::getline(lines, line); ++count)
        if (line.find(", ref_idx=") == std::string::npos && seen.insert(line).second)
            text += line + '\n';
    return text + std::to_string(count) + " lines\n";
}

// With DebugMode, which comments the STF text, for one of the processors.
TEST(TypeZoo, GivesItsTextForEachProcessor) {
    for (const std::string processor : {"80166", "296sa_e", "tricore"}) {
        Indexes index;
        ObjectFile file = {.processor = processor, .trailer = Trailer(0x100)};
        file.debug = TypeBlock("ZOO_C", index, Zoo());
        file.debug += TypeBlock("LATE_C", index, ForwardReferences());
        file.debug += TypeBlock("SIZES_C", index, Sizes());
        Bytes variables = GlobalVariable(index(), "bit", 274, 0x80, 9);
        variables += GlobalVariable(index(), "code", 276, 0);
        for (uint32_t type = 256; type <= 280; ++type)
            variables += GlobalVariable(index(), "v", type == 269 ? 16 : type, 0x7F, 9);
        file.debug += Bb3("SIZES_C", variables);
        const bool debug = processor == "tricore";
        const Converted run = ConvertBytes(Build(file), debug);
        EXPECT_EQ(run.status, 0) << run.console;
        EXPECT_NE(run.console.find("\nWARNING: Debug record for type lost corrupted."),
                  std::string::npos);
        ExpectGolden(Folded(run.stf), "types/golden/" + processor + ".stf");
        if (!debug) continue;
        const size_t begin = run.console.find("Begin of Debug Info");
        const std::string trace = run.console.substr(begin, run.console.find("EOF:\n") - begin);
        ExpectGolden(EachLineOnce(trace), "types/golden/tricore.console");
        ExpectGoldenBytes(run.fst, "types/golden/tricore.fst");
    }
}

// The words of the types that each processor knows, and of those around them.
TEST(TypeZoo, NamesTheBasicTypesOfEachProcessor) {
    std::vector<uint32_t> numbers = {71, 72, 73, 74, 0xFF};
    for (uint32_t i = 0; i < 30; ++i) numbers.push_back(i);
    std::map<uint32_t, std::string> lines;
    for (const uint32_t i : numbers) lines[i] = std::to_string(i) + " ->";
    for (const char* processor : {"80166", "296sa_e", "tricore"}) {
        Bytes types;
        for (const uint32_t i : numbers) types += TypeRecord(256 + i, 0, SmallPointer(i));
        const Converted run = ConvertBytes(
            Build({.processor = processor, .debug = Bb1("M", types), .trailer = Trailer(0)}), true);
        size_t at = 0;
        for (const uint32_t i : numbers)
            for (const std::string field : {"pointer.type_index=", "\ntype="}) {
                at = run.stf.find(field, at) + field.size();
                lines[i] += ' ' + run.stf.substr(at, run.stf.find(';', at) - at);
            }
    }
    std::string text;
    for (const auto& [number, line] : lines) text += line + '\n';
    ExpectGolden(text, "types/golden/basic_types.txt");
}

// An attribute as the first type of all, of a target that never comes; types without a name record
// of their own; a function with a parameter that is another name of it; an array of an enumeration
// of four bytes.
TEST(TypeZoo, OddOrders) {
    const Bytes types =
        NamedType(70, "lost", 256, Qualified(1, 300)) + TypeRecord(257, 70, SmallPointer(256)) +
        Nn(71, "") + TypeRecord(258, 71, Struct(4, {{"a", 257, 0}})) +
        NamedType(72, "f", 259, Function({.parameters = {260, 259}})) +
        NamedType(73, "g", 260, Typedef(259)) +
        NamedType(74, "e", 261, Enum({{"A", 1}}, EnumSize(4))) +
        NamedType(75, "", 262, Array(261, 2)) + NamedType(76, "", 263, Array(256, 1));
    for (const char* processor : {"80166", "tri"}) {
        const Converted run = ConvertBytes(
            Build({.processor = processor, .debug = Bb1("M", types), .trailer = Trailer(0)}));
        EXPECT_EQ(run.status, 0) << run.console;
        ExpectGolden(Folded(run.stf), std::string("types/golden/odd_") + processor + ".stf");
    }
}

// A list of more elements than an item of the image holds keeps its count and loses elements.
TEST(BlockOfTypes, KeepsTheCountOfALongList) {
    const struct {
        size_t count;
        const char* fields;
    } cases[] = {
        {4095, "count=4095;\ninfo=@Member.0;\n"},
        {4096, "count=4096;\ninfo=@Member.-4096;\n"},
    };
    for (const auto& c : cases) {
        const Bytes types = TypeRecord(256, 0, Struct(9, {c.count, Member{"m", 300, 1}})) +
                            TypeRecord(300, 0, SmallPointer(2));
        const Converted run =
            ConvertBytes(Build({.debug = Bb1("M", types), .trailer = Trailer(0)}), true);
        EXPECT_EQ(run.status, 0) << run.console;
        EXPECT_NE(UnixLines(run.stf).find(c.fields), std::string::npos);
    }
}

}  // namespace
}  // namespace scan695::test
