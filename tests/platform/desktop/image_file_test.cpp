#include "platform/desktop/image_file.h"

#include "tests/temporary_folder.h"

#include <array>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gtest/gtest.h>

namespace {

using Colour = std::array<unsigned char, 4>;

class ImageFileTest : public testing::Test {
protected:
    /// A PNG of one colour; of three bytes a pixel when it is opaque.
    std::string png(int width, int height, Colour colour)
    {
        const bool isOpaque = colour[3] == 0xFF;
        GdkPixbuf* const picture = gdk_pixbuf_new(GDK_COLORSPACE_RGB, !isOpaque, 8, width, height);
        gdk_pixbuf_fill(
            picture, static_cast<guint32>(colour[0] << 24 | colour[1] << 16 | colour[2] << 8 | colour[3]));
        std::string path = mFolder / "picture.png";
        EXPECT_TRUE(gdk_pixbuf_save(picture, path.c_str(), "png", nullptr, nullptr));
        g_object_unref(picture);
        return path;
    }
    static Colour pixel(const platform::Pixels& pixels, std::size_t index)
    {
        Colour colour;
        for (std::size_t i = 0; i < 4; ++i)
            colour[i] = std::to_integer<unsigned char>(pixels.bytes[index * 4 + i]);
        return colour;
    }

    TemporaryFolder mFolder;
};

TEST_F(ImageFileTest, ReadsEveryPixelWithItsOpacity)
{
    const auto pixels = platform::readImageFile(png(3, 2, { 10, 20, 30, 40 }), 32);
    ASSERT_TRUE(pixels);
    EXPECT_EQ(pixels->width, 3u);
    EXPECT_EQ(pixels->height, 2u);
    ASSERT_EQ(pixels->bytes.size(), 24u);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(pixel(*pixels, i), (Colour { 10, 20, 30, 40 }));
}

TEST_F(ImageFileTest, PicturesWithoutOpacityAreOpaque)
{
    const auto pixels = platform::readImageFile(png(3, 3, { 10, 20, 30, 0xFF }), 32);
    ASSERT_TRUE(pixels);
    for (std::size_t i = 0; i < 9; ++i)
        EXPECT_EQ(pixel(*pixels, i), (Colour { 10, 20, 30, 0xFF }));
}

TEST_F(ImageFileTest, LargerPicturesBecomeSmallerInProportion)
{
    const auto pixels = platform::readImageFile(png(64, 128, { 1, 2, 3, 0xFF }), 32);
    ASSERT_TRUE(pixels);
    EXPECT_EQ(pixels->width, 16u);
    EXPECT_EQ(pixels->height, 32u);
}

TEST_F(ImageFileTest, SmallerPicturesStayAsTheyAre)
{
    const auto pixels = platform::readImageFile(png(16, 16, { 1, 2, 3, 0xFF }), 32);
    ASSERT_TRUE(pixels);
    EXPECT_EQ(pixels->width, 16u);
}

TEST_F(ImageFileTest, IsNullForWhatIsNoPicture)
{
    writeFile(mFolder / "text.png", "no picture");
    writeFile(mFolder / "empty.png", "");
    EXPECT_FALSE(platform::readImageFile(mFolder / "text.png", 32));
    EXPECT_FALSE(platform::readImageFile(mFolder / "empty.png", 32));
    EXPECT_FALSE(platform::readImageFile(mFolder / "absent.png", 32));
    EXPECT_FALSE(platform::readImageFile(mFolder.path(), 32));
}

TEST_F(ImageFileTest, IsNullForATruncatedPicture)
{
    const std::string path = png(16, 16, { 1, 2, 3, 4 });
    std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
    EXPECT_FALSE(platform::readImageFile(path, 32));
}

TEST_F(ImageFileTest, IsNullForPicturesFarLargerThanIcons)
{
    EXPECT_FALSE(platform::readImageFile(png(4097, 1, { 1, 2, 3, 0xFF }), 32));
    writeFile(mFolder / "large.png", std::string((4 << 20) + 1, 'x'));
    EXPECT_FALSE(platform::readImageFile(mFolder / "large.png", 32));
}

TEST_F(ImageFileTest, APipeIsNoPictureAndIsNotWaitedFor)
{
    const std::string path = mFolder / "pipe.png";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(platform::readImageFile(path, 32));
}

}
