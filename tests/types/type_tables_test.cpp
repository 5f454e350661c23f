// The tables of the type scanner: sizes behind attributes, the placement rules of bitfields.
#include <gtest/gtest.h>

#include <vector>

#include "input/input_state.h"
#include "input/processor.h"
#include "store/tables.h"
#include "store/type_records.h"
#include "types/bitfields.h"
#include "types/type_state.h"
#include "types/type_table.h"

namespace scan695::test {
namespace {

class TypeTables : public testing::Test {
  protected:
    TypeTables() {
        StartStore();
        StartTypes();
        ReserveFstHeader();
    }
};

TEST_F(TypeTables, SizesBehindAttributes) {
    const auto append = [](TypeTag tag, uint32_t number, const TYPEINFO::Variant& u) {
        TYPEINFO record = {0, tag, {}, u};
        AppendType(record, number);
    };
    append(TAG_ARRAY, 101, {.array = {70000, 0, 0, 0}});  // at 100's position
    append(TAG_ATTRIBUTE, 100, {.pointer = {101, 1, 0, 0, {}}});
    append(TAG_ATTRIBUTE, 102, {.pointer = {103, 1, 0, 0, {}}});  // 102 and 103 are a circle
    append(TAG_ATTRIBUTE, 103, {.pointer = {102, 1, 0, 0, {}}});
    append(TAG_ATTRIBUTE, 104, {.pointer = {0x800200, 1, 0, 0, {}}});
    append(TAG_NONE, 105, {});
    for (uint32_t i = 106; i < 146; ++i)  // a long chain that ends in the array
        append(TAG_ATTRIBUTE, i, {.pointer = {i == 106 ? 100 : i - 1, 1, 0, 0, {}}});
    constexpr uint32_t SIZES[][2] = {
        {8, 4},       {12, 1},  {13, 1},       {34, 1},         {100, 70000}, {101, 70000},
        {102, 1},     {103, 1}, {104, 1},      {105, 0},        {145, 70000}, {130, 70000},
        {145, 70000}, {146, 1}, {0x800066, 1}, {0xFFFFFFFF, 1},
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
        {"signed, of two bytes", 12, 2, {{0, 3, 8, 4, 0, 0}, {8, 8, 7, 3, 0, 8}}},
        {"sixteen bits", 13, 8, {{0, 3, 7, 1, 0, 0}, {8, 8, 8, 4, 0, 8}}},
        {"seventeen bits", 13, 8, {{0, 3, 7, 1, 0, 0}, {8, 9, 7, 7, 0, 8}}},
        {"to the end of an odd byte", 13, 4, {{10, 6, 7, 1, 1, 2}}},
        {"over the end of an odd byte", 13, 4, {{10, 7, 7, 7, 0, 10}}},
        {"negative", 13, 8, {{0xFFFFFFFB, 3, 7, 7, 0, -5}}},
        {"negative width", 13, 8, {{8, -3, 7, 1, 0, 8}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Input.Processor = FindProcessor(c.processor == PROCESSOR_TRICORE ? "tri" : "80166");
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

}  // namespace
}  // namespace scan695::test
