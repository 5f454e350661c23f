#include "tests/types/zoo.h"

#include <vector>

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

}  // namespace

ObjectFile TypeZoo(const char* processor) {
    Indexes index;
    ObjectFile file;
    file.processor = processor;
    file.debug = TypeBlock("ZOO_C", index, Zoo());
    file.debug += TypeBlock("LATE_C", index, ForwardReferences());
    file.trailer = Trailer(0x100);
    return file;
}

}  // namespace scan695::test
