#include "LUMFoundation/LUMData_Compression.h"

#include "tests/data/data_text.h"
#include "tests/fixture.h"

#include <thread>

namespace {

using namespace LUMData_Compression;

constexpr NSRange kNotFound { 0x7FFFFFFFFFFFFFFF, 0 };

const char* const kZlibHello = "78 9c cb 48 cd c9 c9 57 28 cf 2f ca 49 01 00 1a 0b 04 5d";
const char* const kGzipHello =
    "1f 8b 08 00 00 00 00 00 02 03 cb 48 cd c9 c9 57 28 cf 2f ca 49 01 00 85 11 4a 0d 0b 00 00 00";
const char* const kHello = "68 65 6c 6c 6f 20 77 6f 72 6c 64";

class LUMData_CompressionTest : public ObjectTest { };

TEST_F(LUMData_CompressionTest, FindsTheBytesUpToTheNextZero)
{
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("61 62 63 00 64 00"), 0), (NSRange { 0, 3 }));
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("61 62 63 00 64 00"), 1), (NSRange { 1, 2 }));
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("61 62 63 00 64 00"), 4), (NSRange { 4, 1 }));
}

TEST_F(LUMData_CompressionTest, FindsNoBytesAtAZero)
{
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("61 00 62"), 1), (NSRange { 1, 0 }));
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("00"), 0), (NSRange { 0, 0 }));
}

TEST_F(LUMData_CompressionTest, FindsNothingWithoutAZero)
{
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("61 62 63"), 0), kNotFound);
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("61 00 62"), 2), kNotFound);
}

TEST_F(LUMData_CompressionTest, FindsNothingAtTheEndOrBehindIt)
{
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("61 00"), 2), kNotFound);
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("61 00"), 2147483647), kNotFound);
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf(""), 0), kNotFound);
}

TEST_F(LUMData_CompressionTest, FindsNothingFromANegativeStart)
{
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("61 00"), -1), kNotFound);
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(dataOf("61 00"), -2147483647 - 1), kNotFound);
}

TEST_F(LUMData_CompressionTest, WritesBase32)
{
    EXPECT_EQ(utf8(base32String(dataOfText("foobar"))), "MZXW6YTBOI");
    EXPECT_EQ(utf8(base32String(dataOfText("f"))), "MY");
    EXPECT_EQ(utf8(base32String(dataOfText("fo"))), "MZXQ");
    EXPECT_EQ(utf8(base32String(dataOfText("foo"))), "MZXW6");
    EXPECT_EQ(utf8(base32String(dataOfText("foob"))), "MZXW6YQ");
    EXPECT_EQ(utf8(base32String(dataOfText("fooba"))), "MZXW6YTB");
}

TEST_F(LUMData_CompressionTest, WritesNoBytesAsTheEmptyBase32)
{
    EXPECT_EQ(utf8(base32String(dataOf(""))), "");
}

TEST_F(LUMData_CompressionTest, ReadsEightBytesOfBase32)
{
    EXPECT_EQ(hex(dataWithBase32String("AAAQEAYEAUDAO")), "00 01 02 03 04 05 06 07");
    EXPECT_EQ(hex(dataWithBase32String("aaaqeayeaudao")), "00 01 02 03 04 05 06 07");
}

TEST_F(LUMData_CompressionTest, DeliberatelyCutsALongerBase32ToEightBytes)
{
    EXPECT_EQ(hex(dataWithBase32String("AAAQEAYEAUDAOCAJBIFQ")), "00 01 02 03 04 05 06 07");
}

TEST_F(LUMData_CompressionTest, DeliberatelyFillsAShorterBase32UpToEightBytesWithZeros)
{
    EXPECT_EQ(hex(dataWithBase32String("MY")), "66 00 00 00 00 00 00 00");
    EXPECT_EQ(hex(dataWithBase32String("MZXW6YTB")), "66 6f 6f 62 61 00 00 00");
}

TEST_F(LUMData_CompressionTest, DeliberatelyReadsBracesInBase32AsA)
{
    EXPECT_EQ(hex(dataWithBase32String("M{|}AAAA")), "60 00 00 00 00 00 00 00");
}

TEST_F(LUMData_CompressionTest, LooksAtAllOfTheBase32ThoughItKeepsEightBytes)
{
    EXPECT_EQ(hex(dataWithBase32String("AAAQEAYEAUDAOCAJBIF!")), "null");
    EXPECT_EQ(hex(dataWithBase32String("AAAQEAYEAUDAOCAJBIFR")), "null");
}

class BadBase32Test : public testing::TestWithParam<std::pair<const char*, std::string>> { };

TEST_P(BadBase32Test, IsNull)
{
    EXPECT_EQ(hex(dataWithBase32String(std::string_view(GetParam().second))), "null");
}

INSTANTIATE_TEST_SUITE_P(LUMData_Compression, BadBase32Test,
    testing::Values(std::pair("Empty", ""), std::pair("OneCharacter", "A"),
        std::pair("ThreeCharacters", "AAA"), std::pair("SixCharacters", "AAAAAA"),
        std::pair("NineCharacters", "AAAAAAAAA"), std::pair("Padding", "MZXW6==="), std::pair("Zero", "A0"),
        std::pair("One", "A1"), std::pair("Eight", "A8"), std::pair("Nine", "A9"), std::pair("Tilde", "A~"),
        std::pair("Delete", "A\x7F"), std::pair("NotASCII", "A\u00C4"), std::pair("UnusedBits", "MB")),
    [](const auto& param) { return param.param.first; });

TEST_F(LUMData_CompressionTest, StuffsBytes)
{
    EXPECT_EQ(hex(encodeCOBS(dataOf("11"))), "02 11 00");
    EXPECT_EQ(hex(encodeCOBS(dataOf("00"))), "01 01 00");
    EXPECT_EQ(hex(encodeCOBS(dataOf("11 00 22 33"))), "02 11 03 22 33 00");
}

TEST_F(LUMData_CompressionTest, StuffsAFullBlockAtTheEnd)
{
    std::string block(254, 'a');
    auto frame = encodeCOBS(dataOfText(block));
    EXPECT_EQ(frame->length(), 257u);
    EXPECT_EQ(hex(frame->bytes().first(2)), "ff 61");
    EXPECT_EQ(hex(frame->bytes().last(3)), "61 01 00");
}

TEST_F(LUMData_CompressionTest, DeliberatelyUnstuffsToTheBytesAndTwoZeros)
{
    EXPECT_EQ(hex(decodeCOBS(dataOf("02 11 00"))), "11 00 00");
    EXPECT_EQ(hex(decodeCOBS(dataOf("01 01 00"))), "00 00 00");
}

TEST_F(LUMData_CompressionTest, UnstuffsABlockThatBreaksOff)
{
    EXPECT_EQ(hex(decodeCOBS(dataOf("05 11 22"))), "11 22");
}

TEST_F(LUMData_CompressionTest, InflatesWhatItDeflated)
{
    EXPECT_EQ(hex(zlibInflate(zlibDeflate(dataOf(kHello)))), kHello);
    EXPECT_EQ(hex(gzipInflate(gzipDeflate(dataOf(kHello)))), kHello);
}

TEST_F(LUMData_CompressionTest, InflatesStreamsOfOtherWriters)
{
    EXPECT_EQ(hex(zlibInflate(dataOf(kZlibHello))), kHello);
    EXPECT_EQ(hex(gzipInflate(dataOf(kGzipHello))), kHello);
}

TEST_F(LUMData_CompressionTest, GzipInflatesZlibStreamsToo)
{
    EXPECT_EQ(hex(gzipInflate(dataOf(kZlibHello))), kHello);
}

TEST_F(LUMData_CompressionTest, ZlibInflatesNoGzipStream)
{
    EXPECT_EQ(hex(zlibInflate(dataOf(kGzipHello))), "null");
}

TEST_F(LUMData_CompressionTest, InflatesNoTruncatedStream)
{
    EXPECT_EQ(hex(zlibInflate(dataOf("78 9c cb 48 cd c9 c9 57 28 cf 2f ca 49 01 00 1a 0b 04"))), "null");
    EXPECT_EQ(hex(gzipInflate(dataOf("1f 8b 08 00 00 00 00 00 02 03 cb 48 cd c9"))), "null");
}

TEST_F(LUMData_CompressionTest, InflatesToEmptyData)
{
    auto data = zlibInflate(dataOf("78 9c 03 00 00 00 00 01"));
    ASSERT_TRUE(data);
    EXPECT_EQ(data->length(), 0u);
}

TEST_F(LUMData_CompressionTest, TakesTheChecksum)
{
    EXPECT_EQ(crc32(dataOfText("123456789")), 0xCBF43926u);
    EXPECT_EQ(crc32(dataOf("")), 0u);
}

TEST_F(LUMData_CompressionTest, TakesDigests)
{
    EXPECT_EQ(hex(md5Digest(dataOfText("abc"))), "90 01 50 98 3c d2 4f b0 d6 96 3f 7d 28 e1 7f 72");
    EXPECT_EQ(
        hex(sha1Digest(dataOfText("abc"))), "a9 99 3e 36 47 06 81 6a ba 3e 25 71 78 50 c2 6c 9c d0 d8 9d");
}

TEST_F(LUMData_CompressionTest, WritesDigestsInLowerCase)
{
    EXPECT_EQ(utf8(md5DigestString(dataOfText("abc"))), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(utf8(sha1DigestString(dataOfText("abc"))), "a9993e364706816aba3e25717850c26c9cd0d89d");
}

TEST_F(LUMData_CompressionTest, TakesDigestsOfNoBytes)
{
    EXPECT_EQ(utf8(md5DigestString(dataOf(""))), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(utf8(sha1DigestString(dataOf(""))), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
}

TEST_F(LUMData_CompressionTest, DeliberatelyAnswersTheVeryObjectWhenItIsEmpty)
{
    for (const NSRef<NSData>& empty : { NSData::data(), NSRef<NSData>(NSMutableData::data()) }) {
        EXPECT_EQ(encodeCOBS(empty), empty);
        EXPECT_EQ(decodeCOBS(empty), empty);
        EXPECT_EQ(zlibInflate(empty), empty);
        EXPECT_EQ(zlibDeflate(empty), empty);
        EXPECT_EQ(gzipInflate(empty), empty);
        EXPECT_EQ(gzipDeflate(empty), empty);
    }
}

TEST_F(LUMData_CompressionTest, MakesImmutableDataOfMutable)
{
    auto mutableData = NSMutableData::dataWithBytes("abc", 3);
    NSRef<NSData> packed = zlibDeflate(mutableData);
    EXPECT_FALSE(NSCast<NSMutableData>(packed));
    EXPECT_EQ(hex(mutableData->bytes()), "61 62 63");
    mutableData->setLength(0);
    EXPECT_EQ(hex(zlibInflate(packed)), "61 62 63");
}

TEST_F(LUMData_CompressionTest, AnswersNothingForNull)
{
    EXPECT_EQ(rangeOfNullTerminatedBytesFrom(nullptr, 0), kNotFound);
    EXPECT_EQ(base32String(nullptr), nullptr);
    EXPECT_EQ(dataWithBase32String(nullptr), nullptr);
    EXPECT_EQ(encodeCOBS(nullptr), nullptr);
    EXPECT_EQ(decodeCOBS(nullptr), nullptr);
    EXPECT_EQ(zlibInflate(nullptr), nullptr);
    EXPECT_EQ(zlibDeflate(nullptr), nullptr);
    EXPECT_EQ(gzipInflate(nullptr), nullptr);
    EXPECT_EQ(gzipDeflate(nullptr), nullptr);
    EXPECT_EQ(crc32(nullptr), 0u);
    EXPECT_EQ(md5Digest(nullptr), nullptr);
    EXPECT_EQ(md5DigestString(nullptr), nullptr);
    EXPECT_EQ(sha1Digest(nullptr), nullptr);
    EXPECT_EQ(sha1DigestString(nullptr), nullptr);
}

TEST_F(LUMData_CompressionTest, RunsOnManyThreadsOverTheSameData)
{
    auto data = dataOfText(std::string(100000, 'a'));
    std::vector<std::string> results(4);
    std::vector<std::thread> threads;
    for (std::string& result : results)
        threads.emplace_back([&] {
            result =
                utf8(md5DigestString(gzipInflate(gzipDeflate(data)))) + " " + std::to_string(crc32(data));
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const std::string& result : results)
        EXPECT_EQ(result, "1af6d6f2f682f76f80e606aeaaee1680 467860103");
}

}
