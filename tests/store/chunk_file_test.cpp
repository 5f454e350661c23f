// The chunked file against a flat one, and the store of names and records above it.
#include <algorithm>

#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

constexpr int32_t CHUNK = ChunkFile::CHUNK_SIZE;

std::string Pattern(size_t size, uint32_t seed) {
    std::string bytes(size, '\0');
    Random random(seed);
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

std::string Contents(ChunkFile& file) {
    std::string bytes(static_cast<size_t>(file.Size()), '\0');
    EXPECT_EQ(file.Transfer(ChunkFile::READ, bytes.data(), file.Size(), 0), 1);
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
        const uint32_t position =
            std::min<uint32_t>(round % 3 == 0 ? near_chunk : random() % (4 * CHUNK),
                               static_cast<uint32_t>(flat.size()));
        if (random() % 2 == 0) {
            std::string bytes = Pattern(length, round);
            ASSERT_EQ(file.Transfer(ChunkFile::WRITE, bytes.data(), static_cast<int32_t>(length),
                                    static_cast<int32_t>(position)),
                      1);
            flat.resize(std::max<size_t>(flat.size(), position + length));
            flat.replace(position, length, bytes);
        } else {
            std::string bytes(length, '?');
            ASSERT_EQ(file.Transfer(ChunkFile::READ, bytes.data(), static_cast<int32_t>(length),
                                    static_cast<int32_t>(position)),
                      1);
            const std::string there = flat.substr(position, length);
            std::string buffer(length, '?');
            const uint8_t* view =
                file.View(position, length, reinterpret_cast<uint8_t*>(buffer.data()));
            ASSERT_EQ(std::string(view, view + length),
                      there + std::string(length - there.size(), '\0'));
            ASSERT_EQ(bytes, there + std::string(length - there.size(), '?'));
            if (length > 0) {
                ASSERT_EQ(file.Position(), static_cast<int32_t>(position + there.size()));
            }
        }
        ASSERT_EQ(static_cast<size_t>(file.Size()), flat.size());
        ASSERT_EQ(file.ChunkCount(), (flat.size() + CHUNK - 1) / CHUNK);
    }
    EXPECT_EQ(Contents(file), flat);
    ASSERT_EQ(file.Resize(CHUNK + 1), 1);
    EXPECT_EQ(Contents(file), flat.substr(0, CHUNK + 1));
    EXPECT_EQ(file.ChunkCount(), 2U);
}

TEST(ChunkFile, SeekTargets) {
    const struct {
        int32_t size, position;
        int64_t offset;
        uint32_t origin;
        int result;
        int32_t then;
    } cases[] = {
        {0, 0, 0, 2, 1, 0},
        {0, 0, -1, 2, 0, 0},
        {100, 7, 100, 0, 1, 100},
        {100, 7, 101, 0, 0, 100},
        {100, 7, -8, 1, 0, 0},
        {100, 7, -7, 1, 1, 0},
        {100, 7, 93, 1, 1, 100},
        {100, 7, 94, 1, 0, 100},
        {100, 7, 5, 2, 0, 100},
        {100, 7, -100, 2, 1, 0},
        {100, 7, -101, 2, 0, 0},
        {100, 7, 0, 3, 0, 7},
        {100, 7, 0xFFFFFFFF, 0, 0, 100},
    };
    for (const auto& c : cases) {
        ChunkFile file;
        ASSERT_EQ(file.Allocate(static_cast<uint32_t>(c.size)), 1);
        file.Seek(c.position, ChunkFile::FROM_START);
        EXPECT_EQ(file.Seek(c.offset, static_cast<ChunkFile::Origin>(c.origin)), c.result)
            << c.offset << " from " << c.origin;
        EXPECT_EQ(file.Position(), c.then) << c.offset << " from " << c.origin;
    }
}

TEST(ChunkFile, ReadsAtTheEnd) {
    ChunkFile file;
    char byte = '?';
    file.Append("abc", 3);
    EXPECT_EQ(file.Transfer(ChunkFile::READ, &byte, 1, 3), 1);
    EXPECT_EQ(byte, '?');
    EXPECT_EQ(file.Transfer(ChunkFile::READ, &byte, 1, 4), 0);
    EXPECT_EQ(file.Transfer(ChunkFile::READ, nullptr, 1, 0), 0);
    EXPECT_EQ(file.Transfer(ChunkFile::READ, nullptr, 0, 9), 1);
    EXPECT_EQ(file.Position(), 3);
    EXPECT_EQ(file.GetByte(), -1);
    file.Seek(2, ChunkFile::FROM_START);
    EXPECT_EQ(file.GetByte(), 'c');
    file.Seek(3, ChunkFile::FROM_START);
    file.Resize(2);
    EXPECT_EQ(file.Position(), 2);
    EXPECT_EQ(file.PutByte(0xFF), 0xFF);
    EXPECT_EQ(Contents(file), "ab\xFF");
}

TEST(ChunkFile, Saves) {
    for (const size_t size : {size_t{0}, size_t{CHUNK}, size_t{CHUNK + 1}}) {
        const std::string bytes = Pattern(size, 5);
        ChunkFile file;
        file.Append(bytes.data(), static_cast<int32_t>(size));
        std::FILE* stream = std::tmpfile();
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(file.SaveAndFree(stream), 1);
        EXPECT_EQ(file.Size(), 0);
        std::string saved(size + 1, '\0');
        std::rewind(stream);
        saved.resize(std::fread(saved.data(), 1, size + 1, stream));
        EXPECT_EQ(saved, bytes);
        std::fclose(stream);
    }
    ChunkFile file;
    file.Append("x", 1);
    std::FILE* full = std::fopen("/dev/full", "wb");
    if (full == nullptr) return;
    std::setvbuf(full, nullptr, _IONBF, 0);
    EXPECT_EQ(file.SaveAndFree(full), 0);
    EXPECT_EQ(file.Size(), 0);
    std::fclose(full);
}

using Items = StoreTest;

TEST_F(Items, ArePaddedAndNeverAtZero) {
    ReserveFstHeader();
    EXPECT_EQ(Store.FstImage.Size(), 136);
    const std::string bytes = Pattern(0x10005, 2);
    const struct {
        uint32_t length, grows;
    } cases[] = {{5, 8}, {8, 8}, {1, 4}, {0x10000, 0}, {0x10005, 8}, {0xFFFF, 0x10000}};
    for (const auto& c : cases) {
        const int32_t end = Store.FstImage.Size();
        EXPECT_EQ(StoreInImage(bytes.data(), c.length),
                  c.grows == 0 ? 0 : static_cast<uint32_t>(end));
        EXPECT_EQ(Store.FstImage.Size(), end + static_cast<int32_t>(c.grows)) << c.length;
    }
}

TEST_F(Items, NamesAreCutInTheCallersBuffer) {
    ReserveFstHeader();
    int16_t longest = 3;
    for (const uint32_t length : {0U, 2U, 31U, 32U, 40U}) {
        char text[50] = {};
        std::memset(text, 'a', length);
        const auto end = static_cast<uint32_t>(Store.FstImage.Size());
        EXPECT_EQ(StoreCountedName(text, longest), end);
        const uint32_t kept = std::min(length, 31U);
        EXPECT_EQ(std::strlen(text), kept);
        EXPECT_EQ(longest, static_cast<int>(std::max(kept, 3U)));
        EXPECT_EQ(static_cast<uint32_t>(Store.FstImage.Size()), end + (kept + 4) / 4 * 4);
    }
}

TEST_F(Items, RecordsByNumber) {
    for (int i = 0; i < 3; ++i) AppendRecord(Store.LineTable, LINEINFO{uint32_t(i), i, 7, 0});
    LINEINFO line = {};
    Store.LineTable.Seek(5, ChunkFile::FROM_START);
    EXPECT_EQ(ReadRecord(Store.LineTable, 2, line), 1);
    EXPECT_EQ(line.address, 2U);
    EXPECT_EQ(ReadRecord(Store.LineTable, 3, line), 1);  // nothing is there, and nothing changes
    EXPECT_EQ(line.address, 2U);
    EXPECT_EQ(ReadRecord(Store.LineTable, 4, line), 0);
    EXPECT_EQ(ReadRecord(Store.LineTable, 0xFFFFFFFF, line), 0);
    WriteRecord(Store.LineTable, 1, LINEINFO{99, 1, 8, 0});
    EXPECT_EQ(Store.LineTable.Position(), 5);
    EXPECT_EQ(Store.LineTable.Size(), 36);
    EXPECT_EQ(ReadRecord(Store.LineTable, 1, line), 1);
    EXPECT_EQ(line.address, 99U);
    EXPECT_STOP(WriteRecord(Store.LineTable, 9, line), "Error: not enough memory\n\a\nPress");
}

}  // namespace
}  // namespace scan695::test
