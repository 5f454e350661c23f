// The order in which the cache gives up its blocks, seen from outside: a read that the cache serves
// leaves the position of the image alone.
#include "store/image_cache.h"

#include <algorithm>

#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

constexpr uint32_t NOF_CACHED = 255;

class ImageCacheTest : public StoreTest {
  protected:
    ImageCacheTest() {
        for (uint32_t i = 0; i < 400 * 8; ++i) Store.FstImage.Append(&i, sizeof i);
    }
    // Block n starts with the word 8 * n. True if the cache had it.
    static bool IsHit(uint32_t block, uint32_t shift = 0) {
        Store.FstImage.Seek(1, ChunkFile::FROM_START);
        uint32_t word;
        std::memcpy(&word, ReadImageBlock(block * 32 + shift * 4), sizeof word);
        EXPECT_EQ(word, block * 8 + shift);
        return Store.FstImage.Position() == 1;
    }
};

TEST_F(ImageCacheTest, GivesUpTheBlockUsedLongestAgo) {
    ASSERT_EQ(OpenImageCache(), 1);
    EXPECT_FALSE(IsHit(0));
    EXPECT_TRUE(IsHit(0));
    EXPECT_FALSE(IsHit(0, 1));  // the same bytes under another offset
    CloseImageCache();
    EXPECT_FALSE(IsHit(0));

    ASSERT_EQ(OpenImageCache(), 1);
    for (uint32_t i = 0; i < NOF_CACHED; ++i) EXPECT_FALSE(IsHit(i));
    EXPECT_TRUE(IsHit(0));     // from the last place to the first
    EXPECT_FALSE(IsHit(300));  // takes the place of 1
    EXPECT_TRUE(IsHit(0));
    EXPECT_TRUE(IsHit(2));
    EXPECT_FALSE(IsHit(1));  // takes the place of 3
    EXPECT_FALSE(IsHit(3));  // takes the place of 4
    EXPECT_TRUE(IsHit(2));
    for (uint32_t i = 5; i < NOF_CACHED; ++i) EXPECT_TRUE(IsHit(i)) << i;
    EXPECT_FALSE(IsHit(4));
}

TEST_F(ImageCacheTest, ReadsOutsideTheImageAreZero) {
    for (const bool open : {false, true}) {
        if (open) OpenImageCache();
        const auto size = static_cast<uint32_t>(Store.FstImage.Size());
        const uint8_t* beyond = ReadImageBlock(size + 1);
        EXPECT_EQ(std::count(beyond, beyond + 32, 0), 32);
        uint8_t buffer[40];
        std::memset(buffer, 0xFF, sizeof buffer);
        EXPECT_EQ(ReadImage(0xFFFFFFF0, buffer, 40), buffer);
        EXPECT_EQ(std::count(buffer, buffer + 40, 0), 40);
        uint32_t last;
        std::memcpy(&last, ReadImageBlock(size - 8), sizeof last);
        EXPECT_EQ(last, 400U * 8 - 2);
        EXPECT_EQ(ReadImage(0, nullptr, 33), nullptr);
        EXPECT_NE(ReadImage(0, nullptr, 32), nullptr);
    }
}

TEST_F(ImageCacheTest, FindsTypesByTheLow16BitsOfTheirIndex) {
    EXPECT_EQ(FindType(100, nullptr), -1);
    // Records 0 to 4 in the order of adding, and the index sorted.
    const uint32_t numbers[] = {104, 100, 0x1FFFF, 101, 110};
    const uint32_t index[] = {1, 3, 0, 4, 2};
    Store.Header.types_offs = static_cast<uint32_t>(Store.FstImage.Size());
    for (const uint32_t number : numbers) {
        const TYPEINFO type = {number, TAG_POINTER, {}, {}};
        Store.FstImage.Append(&type, sizeof type);
    }
    Store.Header.type_index_offs = static_cast<uint32_t>(Store.FstImage.Size());
    Store.FstImage.Append(index, sizeof index);
    Store.Header.nof_types = 5;
    const struct {
        uint32_t type_index;
        int32_t record;
    } cases[] = {{100, 1}, {101, 3},     {104, 0},      {110, 4},     {102, -1},
                 {0, -1},  {0x10064, 1}, {0x800065, 3}, {0x1FFFF, -1}};
    for (const bool open : {false, true}) {
        if (open) OpenImageCache();
        for (const auto& c : cases) {
            TYPEINFO type = {};
            EXPECT_EQ(FindType(c.type_index, &type), c.record) << c.type_index;
            EXPECT_EQ(type.here_type_index, c.record >= 0 ? numbers[c.record] : 0);
        }
        EXPECT_EQ(GetTypeRecord(5, nullptr), nullptr);
        EXPECT_EQ(GetBlockRecord(0, nullptr), nullptr);
    }
}

}  // namespace
}  // namespace scan695::test
