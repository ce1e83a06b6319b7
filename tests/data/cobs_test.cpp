#include "data/cobs.h"

#include "tests/data/hex.h"
#include "tests/data/plain_cobs.h"
#include "tests/data/refusing_memory.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

namespace {

std::string encoded(std::string_view digits)
{
    return hex(lum::encodeCOBS(unhex(digits)));
}

std::string decoded(std::string_view digits)
{
    return hex(lum::decodeCOBS(unhex(digits)));
}

/// `count` times the byte 2a.
std::string run(std::size_t count)
{
    return hex(std::vector<std::byte>(count, std::byte(0x2a)));
}

struct Case {
    const char* name;
    std::string from;
    std::string to;
};

const Case kEncoded[] = {
    { "Nothing", "", "01 00" },
    { "OneByte", "11", "02 11 00" },
    { "OneZero", "00", "01 01 00" },
    { "TwoZeros", "00 00", "01 01 01 00" },
    { "ZeroFirst", "00 11 22", "01 03 11 22 00" },
    { "ZeroLast", "11 22 00", "03 11 22 01 00" },
    { "ZeroBetween", "11 22 00 33", "03 11 22 02 33 00" },
    { "LongerThanAWord", "01 02 03 04 05 06 07 08 09 0a 00 0b", "0b 01 02 03 04 05 06 07 08 09 0a 02 0b 00" },
    { "BlockOneShortOfFull", run(253), "fe " + run(253) + " 00" },
    { "FullBlock", run(254), "ff " + run(254) + " 01 00" },
    { "FullBlockAndZero", run(254) + " 00", "ff " + run(254) + " 01 01 00" },
    { "FullBlockAndByte", run(255), "ff " + run(254) + " 02 2a 00" },
    { "TwoFullBlocks", run(508), "ff " + run(254) + " ff " + run(254) + " 01 00" },
    { "ZeroAndFullBlock", "00 " + run(254), "01 ff " + run(254) + " 01 00" },
};

class EncodedCOBSTest : public testing::TestWithParam<Case> { };

TEST_P(EncodedCOBSTest, IsAsExpected)
{
    EXPECT_EQ(encoded(GetParam().from), GetParam().to);
}

TEST_P(EncodedCOBSTest, DeliberatelyDecodesToTheInputAndTwoZeros)
{
    std::string plain = GetParam().from.empty() ? "00 00" : GetParam().from + " 00 00";
    EXPECT_EQ(decoded(GetParam().to), plain);
}

INSTANTIATE_TEST_SUITE_P(
    COBS, EncodedCOBSTest, testing::ValuesIn(kEncoded), [](const auto& param) { return param.param.name; });

const Case kDecoded[] = {
    { "Nothing", "", "" },
    { "OneByte", "02 11 00", "11 00 00" },
    { "OneByteWithoutDelimiter", "02 11", "11 00" },
    { "FullBlockWithoutDelimiter", "ff " + run(254), run(254) },
    { "FullBlockAndDelimiter", "ff " + run(254) + " 00", run(254) + " 00" },
    { "TwoFrames", "02 11 00 02 22 00", "11 00 00 22 00 00" },
    { "ZeroWithinABlock", "03 00 00 02 11", "00 00 00 11 00" },
    { "CodeAtTheEnd", "02 11 05", "11 00" },
    { "BlockThatBreaksOff", "05 11 22", "11 22" },
    { "FullBlockThatBreaksOff", "ff 11 22", "11 22" },
    { "BlockThatJustFits", "03 11 22", "11 22 00" },
    { "LongBlockBehindShortOnes", "01 02 11 12 " + run(17), "00 11 00 " + run(17) + " 00" },
};

class DecodedCOBSTest : public testing::TestWithParam<Case> { };

TEST_P(DecodedCOBSTest, IsAsExpected)
{
    EXPECT_EQ(decoded(GetParam().from), GetParam().to);
}

INSTANTIATE_TEST_SUITE_P(
    COBS, DecodedCOBSTest, testing::ValuesIn(kDecoded), [](const auto& param) { return param.param.name; });

TEST(COBSTest, DeliberatelyTakesADelimiterForACodeOfOne)
{
    EXPECT_EQ(decoded("00 02 11 00 00"), "00 11 00 00 00");
    EXPECT_EQ(decoded("01 02 11 01 01"), "00 11 00 00 00");
}

TEST(COBSTest, IsNullWithoutMemory)
{
    RefusingMemory memory(0);
    EXPECT_EQ(hex(lum::encodeCOBS(unhex("11"), RefusingMemory::reallocate)), "null");
    EXPECT_EQ(hex(lum::decodeCOBS(unhex("02 11"), RefusingMemory::reallocate)), "null");
}

/// Bytes with long runs, short runs and many zeros.
rc::Gen<std::vector<std::byte>> genBytes()
{
    auto piece = rc::gen::apply(
        [](std::byte byte, std::size_t count) { return std::vector<std::byte>(count, byte); },
        rc::gen::map(rc::gen::element(0, 0, 1, 255), [](int value) { return static_cast<std::byte>(value); }),
        rc::gen::element<std::size_t>(1, 2, 7, 8, 9, 253, 254, 255, 600));
    return rc::gen::map(rc::gen::container<std::vector<std::vector<std::byte>>>(piece),
        [](const std::vector<std::vector<std::byte>>& pieces) {
            std::vector<std::byte> all;
            for (const auto& one : pieces)
                all.insert(all.end(), one.begin(), one.end());
            return all;
        });
}

RC_GTEST_PROP(COBSProperties, EncodesAsAByteByByteEncoderDoes, ())
{
    auto bytes = *genBytes();
    RC_ASSERT(hex(lum::encodeCOBS(bytes)) == hex(plainEncodeCOBS(bytes)));
}

RC_GTEST_PROP(COBSProperties, DecodesAsAByteByByteDecoderDoes, (const std::vector<std::uint8_t>& any))
{
    auto bytes = std::as_bytes(std::span(any));
    RC_ASSERT(hex(lum::decodeCOBS(bytes)) == hex(plainDecodeCOBS(bytes)));
}

RC_GTEST_PROP(COBSProperties, DecodingGivesBackWhatWasEncodedAndTwoZeros, ())
{
    auto bytes = *genBytes();
    auto frame = lum::encodeCOBS(bytes);
    bytes.resize(bytes.size() + 2);
    RC_ASSERT(hex(lum::decodeCOBS(frame->bytes())) == hex(bytes));
}

RC_GTEST_PROP(COBSProperties, AFrameHasNoZeroButItsLastByte, ())
{
    auto frame = lum::encodeCOBS(*genBytes());
    auto bytes = frame->bytes();
    RC_ASSERT(bytes.back() == std::byte(0));
    RC_ASSERT(std::count(bytes.begin(), bytes.end(), std::byte(0)) == 1);
}

}
