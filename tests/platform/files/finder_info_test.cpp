#include "platform/files/finder_info.h"

#include <gtest/gtest.h>
#include <string>

using platform::FinderBytes;

namespace {

std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

/// AppleDouble of one entry, as file servers write it.
std::string appleDouble(char entry, char offset, char length)
{
    return std::string("\0\x05\x16\x07\0\x02\0\0", 8) + std::string(16, '\0') + std::string("\0\x01\0\0\0", 5)
        + entry + std::string(3, '\0') + offset + std::string(3, '\0') + length + "TEXTttxt"
        + std::string(24, '\0');
}

TEST(FinderInfoTest, IsReadAsItIsStored)
{
    const FileInfo info { 0x54455854, 0x74747874, 0x8001, { -1, 2 }, 3 };
    FinderBytes bytes {};
    bytes[16] = std::byte(7);
    platform::store(info, bytes);
    EXPECT_EQ(bytes[0], std::byte('T'));
    EXPECT_EQ(bytes[8], std::byte(0x80));
    EXPECT_EQ(bytes[16], std::byte(7));
    EXPECT_EQ(platform::fileInfoFrom(bytes), info);
}

TEST(FinderInfoTest, IsFoundInAppleDouble)
{
    const auto found = platform::finderBytesOfAppleDouble(bytesOf(appleDouble(9, 38, 32)));
    ASSERT_TRUE(found);
    EXPECT_EQ(platform::fileInfoFrom(*found).fileCreator, 0x74747874u);
}

TEST(FinderInfoTest, IsNotFoundInDamagedAppleDouble)
{
    const std::string good = appleDouble(9, 38, 32);
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_FALSE(platform::finderBytesOfAppleDouble(bytesOf(good).first(length))) << length;
    EXPECT_FALSE(platform::finderBytesOfAppleDouble(bytesOf(appleDouble(8, 38, 32))));
    EXPECT_FALSE(platform::finderBytesOfAppleDouble(bytesOf(appleDouble(9, 39, 32))));
    EXPECT_FALSE(platform::finderBytesOfAppleDouble(bytesOf(appleDouble(9, 38, 31))));
    EXPECT_FALSE(platform::finderBytesOfAppleDouble(bytesOf("x" + good.substr(1))));
}

TEST(FinderInfoTest, IsFoundInAfpInfoOfFullLength)
{
    const std::string good =
        std::string("AFP\0", 4) + std::string(12, '\0') + "TEXTttxt" + std::string(36, '\0');
    ASSERT_TRUE(platform::finderBytesOfAfpInfo(bytesOf(good)));
    EXPECT_EQ(platform::fileInfoFrom(*platform::finderBytesOfAfpInfo(bytesOf(good))).fileType, 0x54455854u);
    EXPECT_FALSE(platform::finderBytesOfAfpInfo(bytesOf(good).first(59)));
    EXPECT_FALSE(platform::finderBytesOfAfpInfo(bytesOf("B" + good.substr(1))));
}

}
