// The indexed resolution of forward references against the plain one, on random tables: numbers,
// records, lists, flags and, with the trace on, every line in its place.
#include "types/update_types.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "reader/primitives.h"
#include "report/report.h"
#include "store/tables.h"
#include "tests/types/plain_types.h"
#include "types/bitfields.h"
#include "types/field_list.h"
#include "types/type_state.h"
#include "types/type_table.h"

namespace scan695::test {
namespace {

std::vector<uint8_t> WholeOf(ChunkFile& file) {
    std::vector<uint8_t> bytes(static_cast<size_t>(file.Size()));
    file.Seek(0, ChunkFile::FROM_START);
    file.Read(bytes.data(), file.Size());
    return bytes;
}

class BothWalks {
  public:
    BothWalks(uint32_t seed, bool debug) : random_(seed), debug_(debug) {
        Store = StoreState();
        Types = TypeState();
        ReserveFstHeader();
        Store.Header.processor = seed % 2 == 0 ? PROCESSOR_C166_FAMILY : PROCESSOR_TRICORE;
        Input.InputCursor = 1;
        plain_.image = WholeOf(Store.FstImage);
        Report.DebugMode = debug;
        Types.Map.BeginBlock();
    }
    ~BothWalks() { Report.DebugMode = 0; }

    void Step() {
        Types.BitfieldsPending = plain_.bitfields_pending = 0;
        const uint32_t choice = Random(100);
        if (choice < 3)
            BeginBlock();
        else if (choice < 12)
            Reference();
        else if (choice < 25)
            AppendCopy();
        else if (choice < 27)
            AppendStruct(4096 + Random(6));
        else if (choice < 50)
            AppendStruct(Random(5));
        else
            AppendRecord();
        ASSERT_EQ(Types.Map.unresolved, plain_.unresolved);
        ASSERT_EQ(Types.BitfieldsPending, plain_.bitfields_pending);
        if (Types.BitfieldsPending == 0) return;
        ASSERT_EQ(Types.BitfieldsStruct, plain_.bitfields_struct);
        if (Random(2) != 0) PlaceBitfields();
    }

    void Finish() {
        UpdateTypes();
        plain_.Update();
        std::vector<uint8_t> table(plain_.table.size() * sizeof(TYPEINFO));
        std::memcpy(table.data(), plain_.table.data(), table.size());
        ASSERT_EQ(WholeOf(Store.TypeTable), table);
        ASSERT_EQ(WholeOf(Store.FstImage), plain_.image);
    }
    const std::string& PlainTrace() const { return plain_.trace; }

  private:
    uint32_t Random(uint32_t below) { return static_cast<uint32_t>(random_() % below); }
    // Few types, so that they meet; some of them share their marker with another.
    uint32_t RandomTk() { return 0x100 + Random(12) + (Random(8) == 0 ? 0x800000 : 0); }

    void BeginBlock() {
        Types.Map.BeginBlock();
        plain_.BeginBlock();
    }

    uint32_t Reference() {
        const uint32_t tk_ti = RandomTk();
        const uint32_t fst_ti = Types.Map.Find(tk_ti);
        EXPECT_EQ(fst_ti, plain_.Find(tk_ti));
        return fst_ti;
    }

    // A counted reference, a marker that nobody counts (as behind another name), or a known type.
    uint32_t RandomType() {
        const uint32_t choice = Random(8);
        if (choice < 3) return Reference();
        if (choice < 4) return RandomTk() | TYPE_MARKER_BIT;
        if (choice < 5 || plain_.table.empty()) return Random(13);
        return 100 + Random(static_cast<uint32_t>(plain_.table.size()));
    }

    void Append(TYPEINFO record) {
        const uint32_t key = Random(3) == 0 ? 0 : RandomTk();
        const uint32_t number = Types.Map.Add(key);
        ASSERT_EQ(number, plain_.Add(key));
        AppendType(record, number);
        plain_.table.push_back(record);
    }

    // Something else between two lists, so that an overlong one meets any word of the next.
    void StorePadding() {
        const std::vector<uint8_t> padding(4 * Random(4), 1);
        StoreInImage(padding.data(), static_cast<uint32_t>(padding.size()));
        plain_.image.insert(plain_.image.end(), padding.begin(), padding.end());
    }

    FieldList RandomList(uint32_t count) {
        StorePadding();
        FieldList list;
        std::vector<FIELDINFO> fields;
        for (uint32_t i = 0; i < count; ++i) {
            fields.push_back({Random(64), Random(4), i < 8 ? RandomType() : 0, 0});
            list.Add(fields.back());
        }
        list_offset_ = list.Store();
        EXPECT_EQ(plain_.StoreList(fields), list_offset_);
        return list;
    }

    void AppendStruct(uint32_t count) {
        const FieldList list = RandomList(count);
        if (count > list.StoredCount()) Types.References.NoteOverlongList(list_offset_);
        TYPEINFO record = {};
        record.type_tag = Random(3) == 0 ? TAG_UNION : TAG_STRUCT;
        record.u.structunion.field_offs = list_offset_;
        record.u.structunion.nof_elem = static_cast<uint16_t>(count);
        Append(record);
    }

    void AppendRecord() {
        constexpr uint8_t TAGS[] = {TAG_POINTER,  TAG_ARRAY,    TAG_ATTRIBUTE,
                                    TAG_BITFIELD, TAG_FUNCTION, TAG_ENUMERATION};
        TYPEINFO record = {};
        record.type_tag = TAGS[Random(6)];
        if (record.type_tag == TAG_BITFIELD)
            record.u.bits = {0, static_cast<int8_t>(1 + Random(16)), {}, 7 + Random(2), {}};
        else if (record.type_tag == TAG_ARRAY)
            record.u.array.type_index = RandomType();
        else if (record.type_tag != TAG_ENUMERATION)
            record.u.pointer.type_index = RandomType();
        if (record.type_tag == TAG_FUNCTION) {
            const uint32_t count = Random(4);
            RandomList(count);
            record.u.function.nof_params = static_cast<uint8_t>(count);
            record.u.function.params_offset = list_offset_;
        }
        Append(record);
    }

    void AppendCopy() {
        if (plain_.table.empty()) return;
        Append(plain_.table[Random(static_cast<uint32_t>(plain_.table.size()))]);
    }

    // Changes elements in place: the plain side takes over what has come of it.
    void PlaceBitfields() {
        Report.DebugMode = 0;
        ResolveStructureBitfields(Types.BitfieldsStruct);
        Report.DebugMode = debug_;
        plain_.image = WholeOf(Store.FstImage);
        plain_.table.resize(Store.Header.nof_types);
        for (uint32_t i = 0; i < Store.Header.nof_types; ++i)
            ReadRecord(Store.TypeTable, i, plain_.table[i]);
        plain_.slots.resize(Types.Map.next_index - FIRST_TYPE_INDEX, 0);
    }

    std::mt19937 random_;
    bool debug_;
    PlainTypes plain_;
    uint32_t list_offset_ = 0;
};

class UpdateTypesAgainstPlainWalk : public testing::TestWithParam<bool> {};

TEST_P(UpdateTypesAgainstPlainWalk, RandomTables) {
    const bool debug = GetParam();
    for (uint32_t seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(seed);
        testing::internal::CaptureStdout();
        BothWalks both(seed, debug);
        for (int step = 0; step < 120 && !testing::Test::HasFatalFailure(); ++step) both.Step();
        if (!testing::Test::HasFatalFailure()) both.Finish();
        const std::string trace = testing::internal::GetCapturedStdout();
        if (testing::Test::HasFatalFailure()) return;
        ASSERT_EQ(trace, debug ? both.PlainTrace() : "");
    }
}

INSTANTIATE_TEST_SUITE_P(Modes, UpdateTypesAgainstPlainWalk, testing::Bool());

}  // namespace
}  // namespace scan695::test
