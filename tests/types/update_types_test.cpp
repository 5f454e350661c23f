// The indexed numbering of types and resolution of forward references against the plain one, on
// random tables: numbers, records, lists, flags and, with the trace on, every line in its place.
#include "types/update_types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "input/cursor.h"
#include "input/processor.h"
#include "report/report.h"
#include "store/tables.h"
#include "types/bitfields.h"
#include "types/field_list.h"
#include "types/type_state.h"
#include "types/type_table.h"

namespace scan695::test {
namespace {

// Arrays searched from their ends, and a walk over every record for each update.
class PlainTypes {
  public:
    void BeginBlock() {
        base += static_cast<uint32_t>(slots.size());
        slots.clear();
        pending_.clear();
        unresolved = 0;
    }

    uint32_t Add(uint32_t key) {
        slots.push_back(key);
        const auto number = static_cast<uint32_t>(slots.size()) + 99;
        if (unresolved != 0 && std::count(pending_.begin(), pending_.end(), key) != 0) {
            Say("Run UpdateTypes for fst_ti=%u as tk_ti=%u\n", number, key);
            Update();
        }
        return base + number;
    }

    uint32_t Find(uint32_t tk_ti) {
        for (size_t i = slots.size(); i > 0; --i)
            if (slots[i - 1] == tk_ti) return base + static_cast<uint32_t>(i) + 99;
        if (updating_) {
            Say("TMAP Update:Cannot find TASKING_type=%d yet\n", tk_ti);
            return TYPE_NOT_FOUND;
        }
        ++unresolved;
        Say("TMAP:Cannot find TASKING_type=%d about 0, storing as unresolved\n", tk_ti);
        if (std::count(pending_.begin(), pending_.end(), tk_ti) == 0) pending_.push_back(tk_ti);
        return tk_ti | TYPE_MARKER_BIT;
    }

    void Update() {
        Say("Updating types, unresolved count=%d\n", unresolved);
        updating_ = true;
        for (uint32_t p = 0; p < table.size() && unresolved != 0; ++p) {
            const uint8_t tag = table[p].type_tag;
            auto& u = table[p].u;
            if (tag == TAG_POINTER) Patch(u.pointer.type_index, "PTR");
            if (tag == TAG_ARRAY) Patch(u.array.type_index, "ARR");
            if (tag == TAG_ATTRIBUTE) Patch(u.pointer.type_index, "ATT");
            if (tag == TAG_FUNCTION) {
                Patch(u.function.type_index, "FUN");
                WalkList(u.function.params_offset, u.function.nof_params, "FPP");
            }
            if ((tag == TAG_STRUCT || tag == TAG_UNION) &&
                WalkList(u.structunion.field_offs, u.structunion.nof_elem, "STR"))
                pending_struct = p + 100;
        }
        updating_ = false;
        Say("End of Updating types, unresolved count=%d\n", unresolved);
    }

    std::vector<TYPEINFO> table;
    std::vector<uint8_t> image;
    std::vector<uint32_t> slots;
    uint32_t base = 0;
    uint32_t unresolved = 0;
    uint32_t pending_struct = 0;  // whose bitfields can be placed
    std::string trace;

  private:
    // True when the field was a marker, and of a type that has come.
    bool Patch(uint32_t& field, const char* label) {
        uint32_t matched = 0;
        uint32_t resolved = 0;
        for (size_t i = 0; i < pending_.size(); ++i) {
            if (field != (pending_[i] | TYPE_MARKER_BIT)) continue;
            ++matched;
            const uint32_t found = Find(pending_[i]);
            if (found == TYPE_NOT_FOUND) continue;
            ++resolved;
            field = found;
            Say("%s:Updated tk_ti=%d as fst_ti=%u\n", label, pending_[i], found);
            if (--unresolved == 0) break;
        }
        return matched != 0 && matched == resolved;
    }

    // The result is that of the last element.
    bool WalkList(uint32_t offset, uint32_t count, const char* label) {
        bool patched = false;
        for (; offset != 0 && count != 0 && unresolved != 0; --count, offset += 16) {
            uint32_t field = 0;
            const bool inside = offset + 12 <= image.size();
            if (inside) std::memcpy(&field, &image[offset + 8], 4);
            patched = Patch(field, label);
            if (inside) std::memcpy(&image[offset + 8], &field, 4);
        }
        return patched;
    }

    template <class... Values>
    void Say(const char* format, Values... values) {
        char line[100];
        std::snprintf(line, sizeof line, format, values...);
        trace += line;
    }

    std::vector<uint32_t> pending_;
    bool updating_ = false;
};

template <class T>
std::vector<T> WholeOf(ChunkFile& file) {
    std::vector<T> all(static_cast<size_t>(file.Size()) / sizeof(T));
    file.ReadAt(0, all.data(), file.Size());
    return all;
}

class BothWalks {
  public:
    BothWalks(uint32_t seed, bool debug) : random_(seed), debug_(debug) {
        Store = StoreState();
        StartTypes();
        ReserveFstHeader();
        Input.Processor = FindProcessor(seed % 2 == 0 ? "80166" : "tri");
        Input.InputCursor = 1;
        Report.DebugMode = debug;
        BeginBlock();
    }
    ~BothWalks() { Report.DebugMode = 0; }

    void Step() {
        const uint32_t choice = Random(100);
        if (choice < 3) return BeginBlock();
        if (choice < 16) return AppendCopy();
        if (choice < 18) return AppendStruct(4096 + Random(6));
        if (choice < 41) return AppendStruct(Random(5));
        if (choice < 91) return AppendRecord();
        Reference();
    }

    void Update() {
        Walk([] { UpdateTypes(); }, [this] { plain_.Update(); });
    }
    const std::string& PlainTrace() const { return plain_.trace; }

  private:
    uint32_t Random(uint32_t below) { return static_cast<uint32_t>(random_() % below); }
    // Few types, so that they meet; some of them share their marker with another.
    uint32_t RandomTk() { return 0x100 + Random(12) + (Random(8) == 0 ? TYPE_MARKER_BIT : 0); }

    void BeginBlock() {
        BeginTypeBlock();
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
        if (choice < 5 || Store.Header.nof_types == 0) return Random(13);
        return 100 + Random(Store.Header.nof_types);
    }

    // Both walks begin at the same tables and come to the same.
    template <class Indexed, class Plain>
    void Walk(const Indexed& indexed, const Plain& plain) {
        Types.BitfieldsPending = false;
        plain_.pending_struct = 0;
        plain_.table = WholeOf<TYPEINFO>(Store.TypeTable);
        plain_.image = WholeOf<uint8_t>(Store.FstImage);
        indexed();
        plain();
        const auto table = WholeOf<TYPEINFO>(Store.TypeTable);
        const size_t size = table.size() * sizeof(TYPEINFO);
        ASSERT_TRUE(size == 0 || std::memcmp(table.data(), plain_.table.data(), size) == 0);
        ASSERT_EQ(WholeOf<uint8_t>(Store.FstImage), plain_.image);
        ASSERT_EQ(Types.Map.unresolved, plain_.unresolved);
        ASSERT_EQ(Types.BitfieldsPending ? Types.BitfieldsStruct : 0, plain_.pending_struct);
    }

    void Append(TYPEINFO record) {
        const uint32_t key = Random(3) == 0 ? 0 : RandomTk();
        uint32_t number = 0;
        Walk([&] { number = TakeTypeNumber(key); }, [&] { ASSERT_EQ(number, plain_.Add(key)); });
        AppendType(record, number);
        if (plain_.pending_struct != 0 && Random(2) != 0) PlaceBitfields();
    }

    uint32_t StoreRandomList(uint32_t count) {
        // Something between two lists, so that an overlong one meets any word of the next.
        const std::vector<uint8_t> padding(4 * Random(4), 1);
        StoreInImage(padding.data(), static_cast<uint32_t>(padding.size()));
        FieldList list;
        for (uint32_t i = 0; i < count; ++i)
            list.Add({Random(64), Random(4), i < 8 ? RandomType() : 0, 0});
        return list.Store();
    }

    void AppendStruct(uint32_t count) {
        TYPEINFO record = {};
        record.type_tag = Random(3) == 0 ? TAG_UNION : TAG_STRUCT;
        record.u.structunion.field_offs = StoreRandomList(count);
        record.u.structunion.nof_elem = static_cast<uint16_t>(count);
        Append(record);
    }

    void AppendRecord() {
        constexpr TypeTag TAGS[] = {TAG_POINTER,  TAG_ARRAY,    TAG_ATTRIBUTE,
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
            record.u.function.nof_params = static_cast<uint8_t>(Random(4));
            record.u.function.params_offset = StoreRandomList(record.u.function.nof_params);
        }
        Append(record);
    }

    void AppendCopy() {
        if (Store.Header.nof_types == 0) return;
        TYPEINFO record = {};
        ReadRecord(Store.TypeTable, Random(Store.Header.nof_types), record);
        Append(record);
    }

    // The elements that are bitfields by the record of their type, and no others, get one of their
    // own. Such a record can make a bitfield of an element further on.
    void PlaceBitfields() {
        auto table = WholeOf<TYPEINFO>(Store.TypeTable);
        const auto before = WholeOf<uint8_t>(Store.FstImage);
        const TYPEINFO record = table[Types.BitfieldsStruct - FIRST_TYPE_INDEX];
        const uint32_t count = record.type_tag == TAG_STRUCT ? record.u.structunion.nof_elem : 0;
        uint32_t number = Types.Map.base + Types.Map.next_index;
        Report.DebugMode = 0;
        ResolveStructureBitfields(Types.BitfieldsStruct);
        Report.DebugMode = debug_;
        const auto after = WholeOf<uint8_t>(Store.FstImage);
        for (uint32_t i = 0; i < count; ++i) {
            const uint32_t at = record.u.structunion.field_offs + 16 * i + 8;
            uint32_t type = 0;
            uint32_t placed = 0;
            if (at + 4 <= before.size()) std::memcpy(&type, &before[at], 4);
            if (at + 4 <= after.size()) std::memcpy(&placed, &after[at], 4);
            const bool is_bitfield = IsRecordType(type) && type - 100 < table.size() &&
                                     table[type - 100].type_tag == TAG_BITFIELD;
            ASSERT_EQ(placed, is_bitfield ? number++ : type);
            if (is_bitfield) table.push_back({0, TAG_BITFIELD, {}, {}});
        }
        ASSERT_EQ(Store.Header.nof_types, table.size());
        plain_.slots.resize(Types.Map.next_index - FIRST_TYPE_INDEX, 0);
    }

    std::mt19937 random_;
    bool debug_;
    PlainTypes plain_;
};

TEST(UpdateTypes, AgainstAPlainWalk) {
    for (uint32_t seed = 0; seed < 800; ++seed) {
        SCOPED_TRACE(seed);
        const bool debug = seed >= 400;
        testing::internal::CaptureStdout();
        BothWalks both(seed, debug);
        for (int step = 0; step < 120 && !HasFailure(); ++step) both.Step();
        both.Update();
        const std::string trace = testing::internal::GetCapturedStdout();
        ASSERT_EQ(trace, debug ? both.PlainTrace() : "");
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace scan695::test
