#include "data/deflate_stream.h"

#include "tests/data/hex.h"
#include "tests/data/refusing_memory.h"

#include <array>
#include <chrono>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

namespace {

using lum::Framing;

/// "null", or the bytes as text.
std::string text(const std::optional<lum::ByteBuffer>& result)
{
    if (!result)
        return "null";
    return std::string(reinterpret_cast<const char*>(result->data()), result->size());
}

std::vector<std::byte> deflated(std::string_view plain, Framing framing)
{
    auto result = lum::deflateBytes(bytesOf(plain), framing);
    EXPECT_TRUE(result);
    return { result->bytes().begin(), result->bytes().end() };
}

/// Bytes that cannot be compressed, the same on every run.
std::string noise(std::size_t size)
{
    std::mt19937 random(7);
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

// Streams written by another implementation, so that reading does not stand on our writing alone.
const char* const kZlibHello = "78 9c cb 48 cd c9 c9 57 28 cf 2f ca 49 01 00 1a 0b 04 5d";
const char* const kGzipHello =
    "1f 8b 08 00 00 00 00 00 02 03 cb 48 cd c9 c9 57 28 cf 2f ca 49 01 00 85 11 4a 0d 0b 00 00 00";

class FramingTest : public testing::TestWithParam<Framing> { };

INSTANTIATE_TEST_SUITE_P(DeflateStream, FramingTest, testing::Values(Framing::Zlib, Framing::Gzip),
    [](const auto& param) { return param.param == Framing::Zlib ? "Zlib" : "Gzip"; });

TEST_P(FramingTest, GivesBackAShortText)
{
    EXPECT_EQ(text(lum::inflateBytes(deflated("hello world", GetParam()), GetParam())), "hello world");
}

TEST_P(FramingTest, GivesBackOneByte)
{
    EXPECT_EQ(text(lum::inflateBytes(deflated("a", GetParam()), GetParam())), "a");
}

TEST_P(FramingTest, GivesBackWhatTakesManyStepsToDeflate)
{
    std::string plain = noise(100000);
    EXPECT_TRUE(text(lum::inflateBytes(deflated(plain, GetParam()), GetParam())) == plain);
}

TEST_P(FramingTest, GivesBackWhatTakesManyStepsToInflate)
{
    std::string plain(10000000, 'a');
    EXPECT_TRUE(text(lum::inflateBytes(deflated(plain, GetParam()), GetParam())) == plain);
}

TEST_P(FramingTest, GivesBackAStreamOfNothing)
{
    auto stream = lum::deflateBytes({}, GetParam());
    EXPECT_EQ(text(lum::inflateBytes(stream->bytes(), GetParam())), "");
}

/// What zlib itself writes with the parameters that are promised.
std::vector<std::byte> writtenByZlib(std::string_view plain, Framing framing)
{
    constexpr int kDefaultLevel = -1;
    constexpr int kDefaultStrategy = 0;
    z_stream stream {};
    const int status = framing == Framing::Zlib
        ? deflateInit(&stream, kDefaultLevel)
        : deflateInit2(&stream, kDefaultLevel, Z_DEFLATED, 15 + 16, 8, kDefaultStrategy);
    EXPECT_EQ(status, Z_OK);
    std::vector<std::byte> result(deflateBound(&stream, plain.size()));
    std::string copy(plain); // zlib takes no const
    stream.next_in = reinterpret_cast<Bytef*>(copy.data());
    stream.avail_in = static_cast<uInt>(copy.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

/// Text in which every level, memory level and strategy finds something else: words that come again near and
/// far, runs, and noise.
std::string mixture()
{
    const std::string random = noise(30000);
    std::string text;
    for (std::size_t i = 0; i + 64 <= random.size(); i += 64) {
        text += random.substr(i, 8) + std::string(static_cast<unsigned char>(random[i]), 'x');
        for (std::size_t word = i; word < i + 64; ++word)
            text += " word" + std::to_string(static_cast<unsigned char>(random[word]) % 50);
    }
    return text;
}

TEST_P(FramingTest, WritesWhatZlibWritesAtItsDefaults)
{
    for (const std::string& plain : { std::string("hello world"), mixture(), noise(100000) })
        EXPECT_TRUE(deflated(plain, GetParam()) == writtenByZlib(plain, GetParam())) << plain.size();
}

TEST(DeflateStreamTest, WritesTheHeaderOfADefaultZlibStream)
{
    EXPECT_EQ(hex(deflated("hello world", Framing::Zlib)).substr(0, 5), "78 9c");
}

TEST(DeflateStreamTest, WritesAGzipHeaderWithoutNameAndTime)
{
    EXPECT_EQ(hex(deflated("hello world", Framing::Gzip)).substr(0, 23), "1f 8b 08 00 00 00 00 00");
}

TEST(DeflateStreamTest, ReadsAZlibStreamOfAnotherWriter)
{
    EXPECT_EQ(text(lum::inflateBytes(unhex(kZlibHello), Framing::Zlib)), "hello world");
}

TEST(DeflateStreamTest, ReadsAGzipStreamOfAnotherWriter)
{
    EXPECT_EQ(text(lum::inflateBytes(unhex(kGzipHello), Framing::Gzip)), "hello world");
}

TEST(DeflateStreamTest, GzipReadsAZlibStreamToo)
{
    EXPECT_EQ(text(lum::inflateBytes(unhex(kZlibHello), Framing::Gzip)), "hello world");
}

TEST(DeflateStreamTest, ZlibRejectsAGzipStream)
{
    EXPECT_EQ(text(lum::inflateBytes(unhex(kGzipHello), Framing::Zlib)), "null");
}

TEST(DeflateStreamTest, LeavesAloneWhatFollowsTheStream)
{
    std::string twice = std::string(kGzipHello) + " " + kGzipHello;
    EXPECT_EQ(text(lum::inflateBytes(unhex(twice), Framing::Gzip)), "hello world");
    EXPECT_EQ(text(lum::inflateBytes(unhex(std::string(kZlibHello) + " ff"), Framing::Zlib)), "hello world");
}

TEST_P(FramingTest, RejectsEveryTruncatedStream)
{
    std::vector<std::byte> stream = deflated("hello world, hello world, hello world", GetParam());
    for (std::size_t size = 0; size < stream.size(); ++size)
        EXPECT_EQ(text(lum::inflateBytes(std::span(stream).first(size), GetParam())), "null") << size;
}

TEST_P(FramingTest, RejectsATruncatedStreamOfManySteps)
{
    std::vector<std::byte> stream = deflated(std::string(10000000, 'a'), GetParam());
    stream.pop_back();
    EXPECT_EQ(text(lum::inflateBytes(stream, GetParam())), "null");
}

/// Half of one byte is no step at all: the output could never grow.
TEST_P(FramingTest, EndsForEveryInputOfOneByte)
{
    for (int value = 0; value < 256; ++value) {
        std::array byte { static_cast<std::byte>(value) };
        EXPECT_EQ(text(lum::inflateBytes(byte, GetParam())), "null") << value;
    }
}

TEST_P(FramingTest, RejectsEveryFlippedBitOfTheContent)
{
    std::vector<std::byte> stream = deflated("hello world", GetParam());
    std::size_t header = GetParam() == Framing::Zlib ? 2 : 10;
    for (std::size_t bit = header * 8; bit < stream.size() * 8; ++bit) {
        std::vector<std::byte> flipped = stream;
        flipped[bit / 8] ^= std::byte(1) << (bit % 8);
        // A checksum follows, so another text never passes; the padding bits of the last block may change.
        std::string result = text(lum::inflateBytes(flipped, GetParam()));
        EXPECT_TRUE(result == "null" || result == "hello world") << bit << ": " << result;
    }
}

TEST(DeflateStreamTest, RejectsAStreamThatAsksForADictionary)
{
    EXPECT_EQ(
        text(lum::inflateBytes(unhex("78 f9 06 2c 02 15 cb 00 11 00 06 2c 02 15"), Framing::Zlib)), "null");
}

TEST_P(FramingTest, RefusesFourGibibytesInsteadOfCuttingThem)
{
    std::byte never {};
    std::span<const std::byte> huge(&never, std::size_t(1) << 32); // told by its size, so not read
    EXPECT_EQ(text(lum::deflateBytes(huge, GetParam())), "null");
    EXPECT_EQ(text(lum::inflateBytes(huge, GetParam())), "null");
}

TEST_P(FramingTest, IsNullWhenZlibCannotBegin)
{
    lum::StreamMemory memory { std::realloc, RefusingMemory::allocate, RefusingMemory::free };
    RefusingMemory none(0);
    EXPECT_EQ(text(lum::deflateBytes(bytesOf("hello"), GetParam(), memory)), "null");
    EXPECT_EQ(text(lum::inflateBytes(unhex(kZlibHello), GetParam(), memory)), "null");
}

TEST_P(FramingTest, IsNullWhenTheOutputCannotBegin)
{
    RefusingMemory none(0);
    lum::StreamMemory memory { RefusingMemory::reallocate };
    EXPECT_EQ(text(lum::deflateBytes(bytesOf("hello"), GetParam(), memory)), "null");
    EXPECT_EQ(text(lum::inflateBytes(unhex(kZlibHello), GetParam(), memory)), "null");
}

TEST_P(FramingTest, IsNullWhenTheOutputCannotGrow)
{
    lum::StreamMemory memory { RefusingMemory::reallocate };
    {
        RefusingMemory two(2);
        EXPECT_EQ(text(lum::deflateBytes(bytesOf(noise(100000)), GetParam(), memory)), "null");
    }
    std::vector<std::byte> stream = deflated(std::string(10000, 'a'), GetParam());
    RefusingMemory two(2);
    EXPECT_EQ(text(lum::inflateBytes(stream, GetParam(), memory)), "null");
}

TEST_P(FramingTest, IsNullWhenZlibRunsOutOfMemoryOnTheWay)
{
    lum::StreamMemory memory { std::realloc, RefusingMemory::allocate, RefusingMemory::free };
    std::vector<std::byte> stream = deflated(std::string(100000, 'a'), GetParam());
    RefusingMemory stateOnly(1); // the window comes later
    EXPECT_EQ(text(lum::inflateBytes(stream, GetParam(), memory)), "null");
}

class StreamMemoryTest : public testing::Test {
protected:
    StreamMemoryTest() { sSizes.clear(); }

    static inline std::vector<std::size_t> sSizes; ///< What the output asked for.
    lum::StreamMemory memory { [](void* block, std::size_t size) {
        sSizes.push_back(size);
        return std::realloc(block, size);
    } };
};

TEST_F(StreamMemoryTest, InflationBeginsWithOneAndAHalfTimesTheInput)
{
    auto stream = unhex(kZlibHello); // 19 bytes
    EXPECT_EQ(text(lum::inflateBytes(stream, Framing::Zlib, memory)), "hello world");
    EXPECT_EQ(sSizes, (std::vector<std::size_t> { 28 }));
}

TEST_F(StreamMemoryTest, InflationTakesFewBlocksForManySteps)
{
    auto stream = unhex("78 9c 4b 4c a4 3d 00 00 7a 47 25 e5"); // 100 times a, in 12 bytes
    EXPECT_EQ(text(lum::inflateBytes(stream, Framing::Zlib, memory)), std::string(100, 'a'));
    EXPECT_EQ(sSizes, (std::vector<std::size_t> { 18, 27, 40, 60, 90, 135 }));
}

TEST_F(StreamMemoryTest, DeflationBeginsWithOneStepOf16384)
{
    auto result = lum::deflateBytes(bytesOf("hello world"), Framing::Zlib, memory);
    EXPECT_EQ(sSizes, (std::vector<std::size_t> { 16384, result->size() }));
}

TEST_F(StreamMemoryTest, DeflationTakesFewBlocksForManySteps)
{
    auto result = lum::deflateBytes(bytesOf(noise(100000)), Framing::Zlib, memory);
    EXPECT_EQ(
        sSizes, (std::vector<std::size_t> { 16384, 32768, 49152, 73728, 110592, 165888, result->size() }));
}

TEST(DeflateStreamTest, InflatesAHighlyCompressibleStreamInLinearTime)
{
    std::vector<std::byte> stream = deflated(std::string(std::size_t(256) << 20, '\0'), Framing::Gzip);
    EXPECT_LT(stream.size(), 262144u); // two thousand steps and more
    auto start = std::chrono::steady_clock::now();
    auto result = lum::inflateBytes(stream, Framing::Gzip);
    // Copying at each step would take minutes, even where sanitizers slow everything down.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_EQ(result->size(), 268435456u);
}

RC_GTEST_PROP(DeflateStreamProperties, InflatingGivesBackWhatWasDeflated, ())
{
    auto plain = *rc::gen::container<std::string>(rc::gen::element('a', 'b', '\0', '\xFF'));
    auto framing = *rc::gen::element(Framing::Zlib, Framing::Gzip);
    RC_ASSERT(text(lum::inflateBytes(deflated(plain, framing), framing)) == plain);
}

}
