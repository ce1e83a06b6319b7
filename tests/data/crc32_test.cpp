#include "data/crc32.h"

#include "tests/data/hex.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <zlib.h>

namespace {

TEST(CRC32Test, OfNothingIsZero)
{
    EXPECT_EQ(lum::crc32({}), 0u);
}

TEST(CRC32Test, OfTheNineDigitsIsTheStandardCheckValue)
{
    EXPECT_EQ(lum::crc32(bytesOf("123456789")), 0xCBF43926u);
}

TEST(CRC32Test, OfAKnownSentence)
{
    EXPECT_EQ(lum::crc32(bytesOf("The quick brown fox jumps over the lazy dog")), 0x414FA339u);
}

TEST(CRC32Test, OfSingleBytes)
{
    EXPECT_EQ(lum::crc32(unhex("00")), 0xD202EF8Du);
    EXPECT_EQ(lum::crc32(unhex("ff")), 0xFF000000u);
}

TEST(CRC32Test, TableHasTheEntriesOfZlibAndIEEE)
{
    EXPECT_EQ(lum::kCRC32Table.size(), 256u);
    EXPECT_EQ(lum::kCRC32Table[0], 0u);
    EXPECT_EQ(lum::kCRC32Table[1], 0x77073096u);
    EXPECT_EQ(lum::kCRC32Table[2], 0xEE0E612Cu);
    EXPECT_EQ(lum::kCRC32Table[8], 0x0EDB8832u);
    EXPECT_EQ(lum::kCRC32Table[128], 0xEDB88320u);
    EXPECT_EQ(lum::kCRC32Table[255], 0x2D02EF8Du);
}

TEST(CRC32Test, TableHasMachineWords)
{
    EXPECT_EQ(sizeof lum::kCRC32Table[0], sizeof(void*));
    for (std::uintptr_t entry : lum::kCRC32Table)
        EXPECT_LE(entry, 0xFFFFFFFFu);
}

RC_GTEST_PROP(CRC32Properties, AgreesWithZlib, (const std::vector<std::uint8_t>& bytes))
{
    RC_ASSERT(lum::crc32(std::as_bytes(std::span(bytes)))
        == ::crc32(0, bytes.data(), static_cast<uInt>(bytes.size())));
}

}
