#include "LUMPlatform/NSImage.h"

#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"

#include <algorithm>
#include <vector>

namespace {

class NSImageTest : public ObjectTest {
protected:
    const std::vector<std::byte> mTwoByOne { std::byte { 1 }, std::byte { 2 }, std::byte { 3 },
        std::byte { 4 }, std::byte { 5 }, std::byte { 6 }, std::byte { 7 }, std::byte { 8 } };
};

TEST_F(NSImageTest, HoldsACopyOfItsPixels)
{
    auto bytes = mTwoByOne;
    const auto image = NSImage::imageWithPixels(bytes, 2, 1);
    std::ranges::fill(bytes, std::byte {});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixelsWide(), 2u);
    EXPECT_EQ(image->pixelsHigh(), 1u);
    EXPECT_TRUE(std::ranges::equal(image->pixels(), mTwoByOne));
}

TEST_F(NSImageTest, IsNullUnlessThePixelsFillItExactly)
{
    EXPECT_FALSE(NSImage::imageWithPixels(mTwoByOne, 1, 1));
    EXPECT_FALSE(NSImage::imageWithPixels(mTwoByOne, 2, 2));
    EXPECT_FALSE(NSImage::imageWithPixels({}, 1, 1));
    EXPECT_TRUE(NSImage::imageWithPixels(mTwoByOne, 1, 2));
}

TEST_F(NSImageTest, IsNullWithoutAPixel)
{
    EXPECT_FALSE(NSImage::imageWithPixels({}, 0, 0));
    EXPECT_FALSE(NSImage::imageWithPixels({}, 0, 5));
    EXPECT_FALSE(NSImage::imageWithPixels({}, 5, 0));
}

TEST_F(NSImageTest, IsNullForSidesWhoseProductWraps)
{
    EXPECT_FALSE(NSImage::imageWithPixels({}, NSUInteger { 1 } << 32, NSUInteger { 1 } << 30));
    EXPECT_FALSE(NSImage::imageWithPixels({}, 16385, 1));
}

TEST_F(NSImageTest, IsItsOwnCopy)
{
    const auto image = NSImage::imageWithPixels(mTwoByOne, 2, 1);
    EXPECT_EQ(image->copy(), image);
}

TEST_F(NSImageTest, TellsItsSizeToDynamicCalls)
{
    const auto image = NSImage::imageWithPixels(mTwoByOne, 2, 1);
    EXPECT_EQ(NSSend<NSUInteger>(image, NSSelector("pixelsWide")), 2u);
    EXPECT_EQ(NSSend<NSUInteger>(image, NSSelector("pixelsHigh")), 1u);
}

}
