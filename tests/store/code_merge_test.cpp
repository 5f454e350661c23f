// The two passes that merge the code.
#include "fst/sort_passes.h"
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

class CodeMerge : public StoreTest {
  protected:
    // Runs the pass on the pieces and walks the section.
    static Pieces Merged(const Pieces& pieces) {
        Reset();
        for (const Piece& piece : pieces) AddCode(piece.address, piece.bytes, piece.mem_type);
        SortCode();
        EXPECT_EQ(Store.CodeTable.Size(), 0U);
        Pieces result;
        uint32_t offset = header.code_offs;
        for (uint32_t i = 0; i < header.nof_code; ++i) {
            const CODEINFO head = ReadSection<CODEINFO>(offset, 1)[0];
            EXPECT_EQ(head.module, -1);
            const std::vector<char> bytes = ReadSection<char>(offset + 16, head.length);
            result.push_back({head.address, {bytes.begin(), bytes.end()}, head.mem_type});
            offset += 16 + head.length;
        }
        EXPECT_EQ(offset, Store.FstImage.Size());
        return result;
    }
};

TEST_F(CodeMerge, JoinsWhatFollows) {
    const std::string half(0x8000, 'h');
    const struct {
        const char* name;
        Pieces pieces, merged;
    } cases[] = {
        {"brought together by the sort",
         {{0x102, "c"}, {0x200, "x"}, {0x100, "ab"}},
         {{0x100, "abc"}, {0x200, "x"}}},
        {"memories apart",
         {{0x100, "a", 2}, {0x101, "b", 0}, {0x102, "c", 2}},
         {{0x101, "b", 0}, {0x100, "a", 2}, {0x102, "c", 2}}},
        {"a piece may reach over the page",
         {{0x1FFFE, "abc"}, {0x20001, "d"}},
         {{0x1FFFE, "abc"}, {0x20001, "d"}}},
        {"a page made of halves",
         {{0x10000, half}, {0x18000, half}, {0x20000, "z"}},
         {{0x10000, half + half}, {0x20000, "z"}}},
        {"memories sort as signed numbers",
         {{1, "a", 0}, {1, "b", 0xFE}},
         {{1, "b", 0xFE}, {1, "a", 0}}},
        {"overlaps keep the order of the input",
         {{0x300, "zz"}, {0x100, "abcd"}, {0x103, "xy"}, {0x105, "v"}, {0x100, "q"}},
         {{0x300, "zz"}, {0x100, "abcd"}, {0x103, "xyv"}, {0x100, "q"}}},
    };
    for (const auto& c : cases) EXPECT_EQ(Merged(c.pieces), c.merged) << c.name;
}

// Of the two blocks at 103 the sort puts the later one first, and it ends behind the start of the
// other.
TEST_F(CodeMerge, ReportsOverlaps) {
    AddCode(0x100, "abcd");
    AddCode(0x103, "xy");
    AddCode(0x103, "n");
    AddCode(0x103, "o", 2);
    Report.DebugMode = 1;
    EXPECT_EQ(ConsoleOf(SortCode),
              "Sorting code\nOverlapped code/data: 0100-0103 <-> 0103-0103\n"
              "Overlapped code/data: 0103-0103 <-> 0103-0104\n");
}

}  // namespace
}  // namespace scan695::test
