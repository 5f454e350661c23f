// The tables of the type scanner: basic types, sizes, the placement rules of bitfields, and the
// item lists of enumerations.
#include <gtest/gtest.h>

#include <vector>

#include "reader/primitives.h"
#include "reader/scan_state.h"
#include "report/report.h"
#include "store/basic_types.h"
#include "store/hash_index.h"
#include "store/tables.h"
#include "tests/support/bytes.h"
#include "types/bitfields.h"
#include "types/cvt_type.h"
#include "types/enum_items.h"
#include "types/type_state.h"
#include "types/type_table.h"

namespace scan695::test {
namespace {

class TypeTables : public testing::Test {
  protected:
    TypeTables() {
        Store = StoreState();
        Types = TypeState();
        Scan = ScanState();
        BasicTypes = BasicTypeState();
        ReserveFstHeader();
    }
    static void Read(const Bytes& bytes, InputState& input) {
        input.InputImage = const_cast<uint8_t*>(bytes.data());
        input.InputLength = static_cast<uint32_t>(bytes.size());
        input.InputCursor = 0;
    }
};

TEST_F(TypeTables, BasicTypesOfTheInput) {
    constexpr uint32_t COMMON[26] = {0,  32, 2,  1, 4, 3, 8, 7, 8, 7, 9, 10, 11,
                                     11, 42, 34, 6, 5, 5, 2, 8, 4, 3, 4, 4,  0};
    struct Processor {
        const char* name;
        uint8_t processor;
        uint32_t c166;
        uint32_t known[3][2];  // what this processor adds: tk_ti and type
    };
    const Processor processors[] = {
        {"80166", 12, 1, {{72, 5}, {73, 6}, {}}},
        {"296sa_", 12, 0, {}},
        {"tri", 13, 0, {{26, 7}, {27, 7}, {28, 3}}},
    };
    for (const Processor& p : processors) {
        SCOPED_TRACE(p.name);
        Store.Header.processor = p.processor;
        Scan.ScanC166 = p.c166;
        for (uint32_t tk_ti = 0; tk_ti < 256; ++tk_ti) {
            uint32_t expected = tk_ti < 26 ? COMMON[tk_ti] : 5;
            std::string warning = "**** UNRECOGNIZED tk_ti=" + std::to_string(tk_ti) +
                                  ", converted to UNDEFINED/UINT\n";
            if (tk_ti < 26) warning.clear();
            for (const auto& known : p.known)
                if (tk_ti != 0 && known[0] == tk_ti) {
                    expected = known[1];
                    warning.clear();
                }
            testing::internal::CaptureStdout();
            EXPECT_EQ(CvtTkType(tk_ti), expected) << tk_ti;
            EXPECT_EQ(testing::internal::GetCapturedStdout(), warning);
        }
    }
    EXPECT_EQ(Types.Map.unresolved, 0U);
}

TEST_F(TypeTables, NamesComeBeforeTypesAndTheNewestWins) {
    Types.Map.BeginBlock();
    EXPECT_EQ(CvtTkType(256), 0x800100U);
    EXPECT_EQ(CvtTkType(256), 0x800100U);
    EXPECT_EQ(Types.Map.unresolved, 2U);
    EXPECT_EQ(Types.Map.pending.size(), 1U);
    EXPECT_EQ(Types.Map.Add(256), 100U);
    EXPECT_EQ(Types.Map.Add(0), 101U);
    EXPECT_EQ(Types.Map.Add(256), 102U);
    uint32_t nested;
    EXPECT_EQ(Types.Map.Lookup(0, nested), 1);
    EXPECT_EQ(nested, 101U);
    EXPECT_EQ(CvtTkType(256), 102U);
    Types.Aliases.Add(256, 0x800123);
    EXPECT_EQ(CvtTkType(256), 0x800123U);
    Types.Map.BeginBlock();
    EXPECT_EQ(CvtTkType(256), 0x800100U);
    EXPECT_EQ(Types.Map.Add(300), 103U);
}

TEST_F(TypeTables, SizesOfTypes) {
    BasicTypes.PointerSize = 3;
    const auto append = [](uint8_t tag, uint32_t number, const TYPEINFO::Variant& u) {
        TYPEINFO record = {0, tag, {}, u};
        AppendType(record, number);
    };
    append(TAG_POINTER, 100, {.pointer = {0, 1, 4, 0, {}}});
    append(TAG_FUNCTION, 102, {.function = {}});  // at 101's position
    append(TAG_ATTRIBUTE, 101, {.pointer = {100, 1, 0, 0, {}}});
    append(TAG_ATTRIBUTE, 103, {.pointer = {101, 1, 0, 0, {}}});
    append(TAG_ARRAY, 104, {.array = {70000, 0, 0, 0}});
    append(TAG_STRUCT, 105, {.structunion = {0, 6, 0, 0, 0}});
    append(TAG_ENUMERATION, 106, {.enumeration = {0, 0, 0, TYPE_SHORT}});
    append(TAG_BITFIELD, 107, {.bits = {0, 3, {}, TYPE_LONG, {}}});
    append(TAG_ATTRIBUTE, 108, {.pointer = {107, 1, 0, 0, {}}});
    append(TAG_ATTRIBUTE, 109, {.pointer = {110, 1, 0, 0, {}}});  // 109 and 110 are a circle
    append(TAG_ATTRIBUTE, 110, {.pointer = {109, 1, 0, 0, {}}});
    append(TAG_ATTRIBUTE, 111, {.pointer = {0x800200, 1, 0, 0, {}}});
    append(0, 112, {});
    for (uint32_t i = 113; i < 153; ++i)  // a long chain that ends in the array
        append(TAG_ATTRIBUTE, i, {.pointer = {i == 113 ? 104 : i - 1, 1, 0, 0, {}}});

    constexpr uint32_t SIZES[][2] = {
        {0, 0},       {8, 4},       {12, 1},      {13, 1},  {34, 1},       {100, 4},
        {101, 4},     {102, 3},     {103, 4},     {105, 6}, {106, 2},      {107, 0},
        {108, 0},     {109, 1},     {110, 1},     {111, 1}, {112, 0},      {104, 70000},
        {152, 70000}, {140, 70000}, {152, 70000}, {153, 1}, {0x800068, 1}, {0xFFFFFFFF, 1},
    };
    for (const auto& [type_index, size] : SIZES)
        EXPECT_EQ(TypeSize(type_index), size) << type_index;
}

struct PlacedField {
    uint32_t bit_offset;
    int8_t width;
    bool is_signed;
    uint32_t type, unit;
    int displacement;
};
struct Placement {
    const char* name;
    uint8_t processor;
    uint32_t struct_size;
    std::vector<PlacedField> fields;  // one group
};

TEST_F(TypeTables, PlacementOfBitfields) {
    const Placement placements[] = {
        {"ulong first",
         12,
         4,
         {{0, 3, false, 7, 0, 0}, {3, 5, true, 8, 0, 3}, {31, 1, false, 7, 0, 31}}},
        {"three bytes", 12, 3, {{0, 3, false, 3, 0, 0}, {16, 2, true, 2, 2, 0}}},
        {"one byte", 12, 1, {{7, 1, false, 1, 0, 7}}},
        {"not at 0", 12, 8, {{32, 4, false, 7, 4, 0}, {63, 1, false, 7, 4, 31}}},
        {"one unit at a time",
         12,
         12,
         {{0, 1, false, 7, 0, 0}, {70, 1, false, 7, 4, 6}, {71, 1, false, 7, 8, 7}}},
        {"behind the struct", 12, 1, {{20, 2, false, 1, 2, 4}}},
        {"struct of -1 bytes", 12, 0xFFFFFFFF, {{0, 2, true, 2, 0, 0}}},
        {"no unit", 12, 4, {{0x80000004, 2, false, 0, 0x10000000, 0}}},
        {"in a byte", 13, 4, {{5, 3, false, 1, 0, 5}, {0, 5, true, 2, 0, 0}}},
        {"over a byte", 13, 4, {{6, 4, true, 4, 0, 6}}},
        {"word of its own", 13, 4, {{22, 4, false, 3, 2, 6}}},
        {"from the anchor",
         13,
         8,
         {{0, 3, false, 1, 0, 0}, {8, 4, false, 3, 0, 8}, {14, 4, true, 8, 0, 14}}},
        {"too far from it",
         13,
         8,
         {{0, 3, false, 1, 0, 0}, {30, 8, false, 7, 2, 14}, {33, 2, true, 8, 2, 17}}},
        {"too wide", 13, 8, {{0, 40, false, 7, 0, 0}}},
        {"negative", 13, 8, {{0xFFFFFFFB, 3, false, 7, 0, -5}}},
        {"negative width", 13, 8, {{8, -3, false, 1, 0, 8}}},
    };
    for (const Placement& placement : placements) {
        SCOPED_TRACE(placement.name);
        Store.Header.processor = placement.processor;
        Types.BfParentSize = placement.struct_size;
        ResetPlacement();
        bool new_group = true;
        for (const PlacedField& field : placement.fields) {
            TYPEINFO record = {};
            record.u.bits = {0, field.width, {}, field.is_signed ? 8U : 7U, {}};
            EXPECT_EQ(PlaceBitfield(field.bit_offset, new_group, record), field.unit);
            EXPECT_EQ(record.u.bits.type_index, field.type) << field.bit_offset;
            EXPECT_EQ(record.u.bits.displacement, field.displacement) << field.bit_offset;
            new_group = false;
        }
    }
}

TEST_F(TypeTables, ItemsOfEnumerations) {
    struct Case {
        const char* bytes;
        uint32_t size, count, left;  // bytes not read
        std::vector<uint32_t> values;
    };
    const Case cases[] = {
        {"n'A' 01 n'B' 05 00 F9", 0, 2, 1, {1, 5}},
        {"00 02 n'A' 84FFFFFFFF 00", 2, 1, 0, {0xFFFFFFFF}},
        {"80 n'A' 03 00 F0", 0x80, 1, 1, {3}},
        {"00 01 00 04 n'A' 07 F9", 4, 1, 1, {7}},
        {"n'A' 80 n'B' 03 n'C' F0", 0, 3, 1, {0, 3, 3}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bytes);
        const Bytes bytes = Hex(c.bytes);
        Read(bytes, Input);
        const EnumItems items = ScanEnumItems();
        EXPECT_EQ(items.size, c.size);
        EXPECT_EQ(items.count, c.count);
        EXPECT_EQ(BytesLeft(), c.left);
        for (size_t i = 0; i < c.values.size(); ++i) {
            FIELDINFO item = {};
            Store.FstImage.Seek(items.field_offs + 16 * static_cast<uint32_t>(i),
                                ChunkFile::FROM_START);
            Store.FstImage.Read(&item, sizeof item);
            EXPECT_EQ(item.value, c.values[i]);
        }
    }
    Input = InputState();
}

TEST(HashIndex, KeepsTheNewestValueOfEachKey) {
    HashIndex index;
    EXPECT_EQ(index.Find(1), nullptr);
    for (uint32_t i = 0; i < 5000; ++i) index.Put(i * 0x10001, i);
    for (uint32_t i = 0; i < 5000; i += 2) index.Put(i * 0x10001, i + 1);
    for (uint32_t i = 0; i < 5000; ++i) {
        ASSERT_NE(index.Find(i * 0x10001), nullptr) << i;
        EXPECT_EQ(*index.Find(i * 0x10001), i | 1U);
        EXPECT_EQ(index.Find(i * 0x10001 + 1), nullptr);
    }
    index.Clear();
    EXPECT_EQ(index.Find(0x10001), nullptr);
}

}  // namespace
}  // namespace scan695::test
