// The tables of the type scanner: basic types, sizes, the placement rules of bitfields, and the
// item lists of enumerations.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "reader/primitives.h"
#include "reader/scan_state.h"
#include "store/add_type.h"
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
};

// As tk_ti=type what each processor knows; all others are UINT, with a warning.
TEST_F(TypeTables, BasicTypesOfTheInput) {
    const std::string common =
        "0=0 1=32 2=2 3=1 4=4 5=3 6=8 7=7 8=8 9=7 10=9 11=10 12=11 13=11 14=42 15=34 16=6 17=5 "
        "18=5 19=2 20=8 21=4 22=3 23=4 24=4 25=0 ";
    const struct {
        uint8_t processor;
        uint32_t c166;
        std::string types;
    } cases[] = {
        {PROCESSOR_C166_FAMILY, 1, common + "72=5 73=6 "},
        {PROCESSOR_C166_FAMILY, 0, common},
        {PROCESSOR_TRICORE, 0, common + "26=7 27=7 28=3 "},
    };
    for (const auto& c : cases) {
        Store.Header.processor = c.processor;
        Scan.ScanC166 = c.c166;
        std::string types;
        for (uint32_t tk_ti = 0; tk_ti < 256; ++tk_ti) {
            testing::internal::CaptureStdout();
            const std::string type = std::to_string(CvtTkType(tk_ti));
            const std::string warning = testing::internal::GetCapturedStdout();
            const std::string number = std::to_string(tk_ti);
            if (warning.empty())
                types += number + "=" + type + " ";
            else
                EXPECT_EQ(type + warning,
                          "5**** UNRECOGNIZED tk_ti=" + number + ", converted to UNDEFINED/UINT\n");
        }
        EXPECT_EQ(types, c.types);
    }
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

TEST_F(TypeTables, PlacementOfBitfields) {
    struct Field {
        uint32_t bit_offset;
        int8_t width;
        uint32_t old_type;  // 7 unsigned, 8 signed
        uint32_t type, unit;
        int displacement;
    };
    const struct {
        const char* what;
        uint8_t processor;
        uint32_t struct_size;
        std::vector<Field> fields;  // one group
    } cases[] = {
        {"ulong first", 12, 4, {{0, 3, 7, 7, 0, 0}, {3, 5, 8, 8, 0, 3}, {31, 1, 7, 7, 0, 31}}},
        {"three bytes", 12, 3, {{0, 3, 7, 3, 0, 0}, {16, 2, 8, 2, 2, 0}}},
        {"one byte", 12, 1, {{7, 1, 7, 1, 0, 7}}},
        {"not at 0", 12, 8, {{32, 4, 7, 7, 4, 0}, {63, 1, 7, 7, 4, 31}}},
        {"one at a time", 12, 12, {{0, 1, 7, 7, 0, 0}, {70, 1, 7, 7, 4, 6}, {71, 1, 7, 7, 8, 7}}},
        {"behind the struct", 12, 1, {{20, 2, 7, 1, 2, 4}}},
        {"struct of -1 bytes", 12, 0xFFFFFFFF, {{0, 2, 8, 2, 0, 0}}},
        {"no unit", 12, 4, {{0x80000004, 2, 7, 0, 0x10000000, 0}}},
        {"in a byte", 13, 4, {{5, 3, 7, 1, 0, 5}, {0, 5, 8, 2, 0, 0}}},
        {"over a byte", 13, 4, {{6, 4, 8, 4, 0, 6}}},
        {"word of its own", 13, 4, {{22, 4, 7, 3, 2, 6}}},
        {"by the anchor", 13, 8, {{0, 3, 7, 1, 0, 0}, {8, 4, 7, 3, 0, 8}, {14, 4, 8, 8, 0, 14}}},
        {"too far", 13, 8, {{0, 3, 7, 1, 0, 0}, {30, 8, 7, 7, 2, 14}, {33, 2, 8, 8, 2, 17}}},
        {"too wide", 13, 8, {{0, 40, 7, 7, 0, 0}}},
        {"negative", 13, 8, {{0xFFFFFFFB, 3, 7, 7, 0, -5}}},
        {"negative width", 13, 8, {{8, -3, 7, 1, 0, 8}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Store.Header.processor = c.processor;
        Types.BfParentSize = c.struct_size;
        ResetPlacement();
        bool new_group = true;
        for (const Field& field : c.fields) {
            TYPEINFO record = {};
            record.u.bits = {0, field.width, {}, field.old_type, {}};
            EXPECT_EQ(PlaceBitfield(field.bit_offset, new_group, record), field.unit);
            EXPECT_EQ(record.u.bits.type_index, field.type) << field.bit_offset;
            EXPECT_EQ(record.u.bits.displacement, field.displacement) << field.bit_offset;
            new_group = false;
        }
    }
}

TEST_F(TypeTables, ItemsOfEnumerations) {
    const struct {
        const char* bytes;
        uint32_t size, left;  // bytes not read
        std::vector<uint32_t> values;
    } cases[] = {
        {"n'A' 01 n'B' 05 00 F9", 0, 1, {1, 5}},
        {"00 02 n'A' 84FFFFFFFF 00", 2, 0, {0xFFFFFFFF}},
        {"80 n'A' 03 00 F0", 0x80, 1, {3}},
        {"00 01 00 04 n'A' 07 F9", 4, 1, {7}},
        {"n'A' 80 n'B' 03 n'C' F0", 0, 1, {0, 3, 3}},
    };
    for (const auto& c : cases) {
        Bytes bytes = Hex(c.bytes);
        Input.InputImage = &bytes[0];
        Input.InputLength = static_cast<uint32_t>(bytes.size());
        Input.InputCursor = 0;
        const EnumItems items = ScanEnumItems();
        EXPECT_EQ(items.size, c.size) << c.bytes;
        EXPECT_EQ(BytesLeft(), c.left) << c.bytes;
        std::vector<uint32_t> values;
        for (uint32_t i = 0; i < items.count; ++i) {
            FIELDINFO item = {};
            ReadField(items.field_offs + 16 * i, item);
            values.push_back(item.value);
        }
        EXPECT_EQ(values, c.values) << c.bytes;
    }
    Input = InputState();
}

TEST(HashIndex, KeepsTheNewestValueOfEachKey) {
    HashIndex index;
    for (uint32_t i = 0; i < 5000; ++i) index.Put(i * 0x10001, i);
    for (uint32_t i = 0; i < 5000; i += 2) index.Put(i * 0x10001, i + 1);
    for (uint32_t i = 0; i < 5000; ++i) {
        ASSERT_NE(index.Find(i * 0x10001), nullptr) << i;
        EXPECT_EQ(*index.Find(i * 0x10001), i | 1U);
    }
    index.Clear();
    EXPECT_EQ(index.Find(0x10001), nullptr);
}

}  // namespace
}  // namespace scan695::test
