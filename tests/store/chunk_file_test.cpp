// The chunked file against a flat one, and the store of names and records above it.
#include <algorithm>

#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

constexpr uint32_t CHUNK = ChunkFile::CHUNK_SIZE;

std::string Pattern(size_t size, uint32_t seed) {
    std::string bytes(size, '\0');
    Random random(seed);
    for (char& byte : bytes) byte = static_cast<char>(random() & 0x7F);
    return bytes;
}

TEST(ChunkFile, WritesAndReadsLikeAFlatFile) {
    ChunkFile file;
    std::string flat;
    Random random(1);
    for (uint32_t round = 0; round < 400; ++round) {
        // Lengths and positions near the boundaries of chunks, and anywhere.
        const uint32_t near_chunk = random() % 3 * CHUNK + random() % 5;
        const uint32_t length = round % 2 == 0 ? random() % 300 : near_chunk;
        const uint32_t anywhere = round % 3 == 0 ? near_chunk : random() % (4 * CHUNK);
        const auto at = std::min(anywhere, static_cast<uint32_t>(flat.size()));
        std::string bytes = Pattern(length, round);
        const bool writes = random() % 2 == 0;
        std::string expected = writes ? bytes : flat.substr(at, length);
        if (writes) flat.replace(at, length, bytes);
        const size_t end = at + expected.size();
        expected += bytes.substr(expected.size());  // where the file has nothing
        ASSERT_TRUE(writes ? file.WriteAt(at, bytes.data(), length)
                           : file.ReadAt(at, bytes.data(), length));
        ASSERT_TRUE(bytes == expected) << round;

        std::vector<uint8_t> buffer(length);
        const uint8_t* view = file.View(at, length, buffer.data());
        std::fill(expected.begin() + long(end - at), expected.end(), '\0');
        ASSERT_TRUE(std::string(view, view + length) == expected) << round;
        ASSERT_EQ(size_t(file.Size()), flat.size());
        ASSERT_EQ(file.ChunkCount(), (flat.size() + CHUNK - 1) / CHUNK);
    }
    for (const uint32_t size : {2 * CHUNK, CHUNK + 1, 0U}) {
        ASSERT_TRUE(file.Resize(size));
        EXPECT_EQ(file.ChunkCount(), (size + CHUNK - 1) / CHUNK);
        std::FILE* stream = std::tmpfile();
        EXPECT_TRUE(file.Save(stream));
        std::rewind(stream);
        std::string saved(size + 1, '\0');
        saved.resize(std::fread(saved.data(), 1, size + 1, stream));
        EXPECT_TRUE(saved == flat.substr(0, size)) << size;
        std::fclose(stream);
    }
}

TEST(ChunkFile, AtTheEnds) {
    ChunkFile file;
    char byte = '?';
    ASSERT_TRUE(file.Append("abc", 3));
    EXPECT_TRUE(file.ReadAt(3, &byte, 1));
    EXPECT_FALSE(file.ReadAt(4, &byte, 1));
    EXPECT_FALSE(file.WriteAt(4, &byte, 1));
    EXPECT_FALSE(file.WriteAt(3, &byte, ChunkFile::MAX_SIZE));
    EXPECT_FALSE(file.Resize(ChunkFile::MAX_SIZE + 1));
    EXPECT_EQ(byte, '?');
    EXPECT_EQ(file.Size(), 3U);
    ASSERT_TRUE(file.Resize(3 * CHUNK));
    ASSERT_TRUE(file.WriteAt(2 * CHUNK, "x", 1));
    file.FreeInFrontOf(2 * CHUNK);
    EXPECT_TRUE(file.ReadAt(2 * CHUNK, &byte, 1));
    EXPECT_EQ(byte, 'x');
}

using Items = StoreTest;

TEST_F(Items, ArePaddedAndNeverAtZero) {
    const std::string bytes = Pattern(0x10005, 2);
    const struct {
        uint32_t length, grows;
    } cases[] = {{5, 8}, {8, 8}, {1, 4}, {0x10000, 0}, {0x10005, 8}, {0xFFFF, 0x10000}};
    for (const auto& c : cases) {
        const auto end = static_cast<uint32_t>(Store.FstImage.Size());
        EXPECT_EQ(StoreInImage(bytes.data(), c.length), c.grows == 0 ? 0 : end);
        EXPECT_EQ(static_cast<uint32_t>(Store.FstImage.Size()), end + c.grows) << c.length;
    }
}

TEST_F(Items, NamesAreCut) {
    int16_t longest = 3;
    for (const size_t length : {0U, 2U, 31U, 32U, 40U}) {
        std::string text(length, 'a');
        const uint32_t offset = StoreCountedName(text.c_str(), longest);
        const std::string kept = text.substr(0, 31) + '\0';
        EXPECT_STREQ(CutName(text.data()), kept.c_str());
        EXPECT_EQ(longest, static_cast<int>(std::max<size_t>(kept.size() - 1, 3)));
        const auto stored = ReadSection<char>(offset, static_cast<uint32_t>(kept.size()));
        EXPECT_EQ(std::string(stored.begin(), stored.end()), kept);
    }
}

TEST_F(Items, RecordsByNumber) {
    for (uint16_t i = 0; i < 3; ++i) AddLine(i, i, 7);
    LINEINFO line = {};
    EXPECT_TRUE(ReadRecord(Store.LineTable, 2, line));
    EXPECT_TRUE(ReadRecord(Store.LineTable, 3, line));  // nothing is there, and nothing changes
    EXPECT_EQ(line.address, 2U);
    EXPECT_FALSE(ReadRecord(Store.LineTable, 4, line));
    EXPECT_FALSE(ReadRecord(Store.LineTable, 0xFFFFFFFF, line));
    WriteRecord(Store.LineTable, 1, LINEINFO{99, 1, 8, 0});
    EXPECT_EQ(Store.LineTable.Size(), 36U);
    EXPECT_TRUE(ReadRecord(Store.LineTable, 1, line));
    EXPECT_EQ(line.address, 99U);
    EXPECT_STOP(WriteRecord(Store.LineTable, 9, line), "Error: not enough memory\n\a\nPress");
}

}  // namespace
}  // namespace scan695::test
