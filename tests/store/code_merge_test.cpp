// The two passes that merge the code.
#include "store/sort_passes.h"
#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

struct Piece {
    uint32_t address;
    std::string bytes;
    uint8_t mem_type = 0;
    friend bool operator==(const Piece&, const Piece&) = default;
};
using Pieces = std::vector<Piece>;

void PrintTo(const Piece& piece, std::ostream* out) {
    *out << std::hex << piece.address << "." << int{piece.mem_type} << ":"
         << (piece.bytes.size() < 20 ? piece.bytes : std::to_string(piece.bytes.size()));
}

class CodeMerge : public StoreTest {
  protected:
    static void Merge(const Pieces& pieces) {
        Store = StoreState();
        ReserveFstHeader();
        for (const Piece& piece : pieces) {
            const auto length = static_cast<uint32_t>(piece.bytes.size());
            AppendRecord(Store.CodeTable, CODEINFO{piece.address, length, -1, piece.mem_type, {}});
            AppendRecordBytes(Store.CodeTable, piece.bytes.data(), length);
            ++Store.Header.nof_code;
        }
        SortCode();
        EXPECT_EQ(Store.CodeTable.Size(), 0);
    }
    // Runs the pass on the pieces and walks the section.
    static Pieces Merged(const Pieces& pieces) {
        Merge(pieces);
        Pieces result;
        uint32_t offset = Store.Header.code_offs;
        EXPECT_EQ(offset, pieces.empty() ? 0U : 136U);
        for (uint32_t i = 0; i < Store.Header.nof_code; ++i) {
            const CODEINFO head = ReadSection<CODEINFO>(offset, 1)[0];
            EXPECT_EQ(head.module, -1);
            const std::vector<char> bytes = ReadSection<char>(offset + 16, head.length);
            result.push_back({head.address, {bytes.begin(), bytes.end()}, head.mem_type});
            offset += 16 + head.length;
        }
        EXPECT_EQ(pieces.empty() ? 136 : offset, static_cast<uint32_t>(Store.FstImage.Size()));
        return result;
    }
};

TEST_F(CodeMerge, JoinsWhatFollows) {
    const std::string half(0x8000, 'h'), page(0x10000, 'p');
    const struct {
        const char* name;
        Pieces pieces, merged;
    } cases[] = {
        {"one", {{0x100, "a"}}, {{0x100, "a"}}},
        {"neighbours",
         {{0x100, "ab"}, {0x102, "cd"}, {0x105, "e"}},
         {{0x100, "abcd"}, {0x105, "e"}}},
        {"brought together by the sort",
         {{0x102, "c"}, {0x200, "x"}, {0x100, "ab"}},
         {{0x100, "abc"}, {0x200, "x"}}},
        {"memories apart",
         {{0x100, "a", 2}, {0x101, "b", 0}, {0x102, "c", 2}},
         {{0x101, "b", 0}, {0x100, "a", 2}, {0x102, "c", 2}}},
        {"another page starts a block",
         {{0x1FFFE, "ab"}, {0x20000, "cd"}},
         {{0x1FFFE, "ab"}, {0x20000, "cd"}}},
        {"a piece may reach over the page",
         {{0x1FFFE, "abc"}, {0x20001, "d"}},
         {{0x1FFFE, "abc"}, {0x20001, "d"}}},
        {"a page made of halves",
         {{0x10000, half}, {0x18000, half}, {0x20000, "z"}},
         {{0x10000, half + half}, {0x20000, "z"}}},
        {"a whole page", {{0x20000, "z"}, {0x10000, page}}, {{0x10000, page}, {0x20000, "z"}}},
        {"the same address in two memories",
         {{0x100, "aa", 2}, {0x100, "bb", 0}},
         {{0x100, "bb", 0}, {0x100, "aa", 2}}},
        {"memories sort as signed numbers",
         {{1, "a", 0}, {1, "b", 0xFE}},
         {{1, "b", 0xFE}, {1, "a", 0}}},
    };
    for (const auto& c : cases) EXPECT_EQ(Merged(c.pieces), c.merged) << c.name;
}

TEST_F(CodeMerge, OverlapsKeepTheOrderOfTheInput) {
    const Pieces pieces = {
        {0x300, "zz"}, {0x100, "abcd"}, {0x103, "xy"}, {0x105, "v"}, {0x100, "q"}};
    const std::string console = ConsoleOf([&] {
        EXPECT_EQ(Merged(pieces),
                  Pieces({{0x300, "zz"}, {0x100, "abcd"}, {0x103, "xyv"}, {0x100, "q"}}));
    });
    EXPECT_EQ(console, "");
    // Of the two blocks at 103 the sort puts the later one first, and it ends behind the start of
    // the other.
    Report.DebugMode = 1;
    const std::string trace = ConsoleOf([] {
        Merge({{0x100, "abcd"}, {0x103, "xy"}, {0xFFFF0, "m"}, {0x103, "n"}, {0x103, "o", 2}});
    });
    EXPECT_EQ(trace,
              "Sorting code\nOverlapped code/data: 0100-0103 <-> 0103-0103\n"
              "Overlapped code/data: 0103-0103 <-> 0103-0104\n");
}

TEST_F(CodeMerge, NoCode) {
    EXPECT_EQ(ConsoleOf([] { EXPECT_EQ(Merged({}), Pieces()); }),
              "Warning: no code/data detected\n");
}

}  // namespace
}  // namespace scan695::test
