// The order in which the cache gives up its blocks, seen from outside: a read that the cache serves
// leaves the position of the image alone.
#include "fst/image_cache.h"

#include "tests/store/store_fixture.h"

namespace scan695::test {
namespace {

class ImageCacheTest : public StoreTest {
  protected:
    ImageCacheTest() {
        Store = StoreState();
        for (uint32_t i = 0; i < 400 * 8; ++i) Store.FstImage.Append(&i, sizeof i);
    }
    // Block n starts with the word 8 * n. True if the cache had it.
    static bool IsHit(uint32_t block, uint32_t shift = 0) {
        Store.FstImage.Seek(1, ChunkFile::FROM_START);
        EXPECT_EQ(GetIndexEntry(block * 32, shift), block * 8 + shift);
        return Store.FstImage.Position() == 1;
    }
};

TEST_F(ImageCacheTest, GivesUpTheBlockUsedLongestAgo) {
    ASSERT_EQ(OpenImageCache(), 1);
    EXPECT_FALSE(IsHit(0, 1));
    CloseImageCache();
    EXPECT_FALSE(IsHit(0, 1));

    ASSERT_EQ(OpenImageCache(), 1);
    for (uint32_t i = 0; i < 255; ++i) EXPECT_FALSE(IsHit(i));
    EXPECT_TRUE(IsHit(0));     // from the last place to the first
    EXPECT_FALSE(IsHit(300));  // takes the place of 1
    EXPECT_TRUE(IsHit(2));
    EXPECT_FALSE(IsHit(1));  // takes the place of 3
    EXPECT_FALSE(IsHit(3));  // takes the place of 4
    EXPECT_TRUE(IsHit(2));
    for (uint32_t i = 5; i < 255; ++i) EXPECT_TRUE(IsHit(i)) << i;
    EXPECT_FALSE(IsHit(4));
    EXPECT_FALSE(IsHit(0, 1));  // the same bytes under another offset
}

TEST_F(ImageCacheTest, ReadsOutsideTheImageAreZero) {
    const auto size = static_cast<uint32_t>(Store.FstImage.Size());
    for (const bool open : {false, true}) {
        if (open) OpenImageCache();
        EXPECT_EQ(std::string(ReadImageBlock(size + 1), ReadImageBlock(size + 1) + 32),
                  std::string(32, '\0'));
        std::string buffer(40, 'x');
        EXPECT_EQ(ReadImage(0xFFFFFFF0, buffer.data(), 40), buffer.data());
        EXPECT_EQ(buffer, std::string(40, '\0'));
        EXPECT_EQ(GetIndexEntry(size - 8, 0), 400U * 8 - 2);
        EXPECT_EQ(ReadImage(0, nullptr, 33), nullptr);
        EXPECT_NE(ReadImage(0, nullptr, 32), nullptr);
    }
}

}  // namespace
}  // namespace scan695::test
