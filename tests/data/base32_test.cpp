#include "data/base32.h"

#include "tests/data/hex.h"
#include "tests/data/refusing_memory.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

namespace {

using lum::Base32Digits;

std::string encoded(std::span<const std::byte> bytes)
{
    std::u16string text(lum::base32Length(bytes.size()), u'?');
    lum::encodeBase32(bytes, text.data());
    return { text.begin(), text.end() };
}

std::string decoded(std::string_view text, Base32Digits digits = Base32Digits::Strict)
{
    std::u16string characters;
    for (char character : text)
        characters += static_cast<unsigned char>(character);
    return hex(lum::decodeBase32(characters, digits));
}

struct Pair {
    const char* name;
    const char* plain;
    const char* text;
};

// The examples of RFC 4648, without their padding, and every character of the alphabet.
const Pair kPairs[] = {
    { "Nothing", "", "" },
    { "OneByte", "66", "MY" },
    { "TwoBytes", "66 6f", "MZXQ" },
    { "ThreeBytes", "66 6f 6f", "MZXW6" },
    { "FourBytes", "66 6f 6f 62", "MZXW6YQ" },
    { "FiveBytes", "66 6f 6f 62 61", "MZXW6YTB" },
    { "SixBytes", "66 6f 6f 62 61 72", "MZXW6YTBOI" },
    { "EveryDigit", "00 44 32 14 c7 42 54 b6 35 cf 84 65 3a 56 d7 c6 75 be 77 df",
        "ABCDEFGHIJKLMNOPQRSTUVWXYZ234567" },
    { "OnlyOnes", "ff ff ff ff ff ff", "7777777774" },
};

class Base32PairTest : public testing::TestWithParam<Pair> { };

TEST_P(Base32PairTest, Encodes)
{
    EXPECT_EQ(encoded(unhex(GetParam().plain)), GetParam().text);
}

TEST_P(Base32PairTest, Decodes)
{
    EXPECT_EQ(decoded(GetParam().text), GetParam().plain);
}

INSTANTIATE_TEST_SUITE_P(
    Base32, Base32PairTest, testing::ValuesIn(kPairs), [](const auto& param) { return param.param.name; });

struct BadText {
    const char* name;
    std::string text;
};

const BadText kBadTexts[] = {
    { "LengthOne", "A" },
    { "LengthThree", "AAA" },
    { "LengthSix", "AAAAAA" },
    { "LengthNine", "AAAAAAAAA" },
    { "LengthEleven", "AAAAAAAAAAA" },
    { "LengthFourteen", "AAAAAAAAAAAAAA" },
    { "Padding", "MY======" },
    { "DigitZero", "M0" },
    { "DigitOne", "M1" },
    { "DigitEight", "M8" },
    { "DigitNine", "M9" },
    { "Colon", "M:" },
    { "AtSign", "M@" },
    { "Bracket", "M[" },
    { "Backquote", "M`" },
    { "Tilde", "M~" },
    { "Delete", "M\x7F" },
    { "Blank", "MY MY MY" },
    { "LineEnd", "MZXW6YT\n" },
    { "NulByte", std::string("M\0", 2) },
    { "BeyondASCII", "M\xC3" },
    { "BadDigitInTheFirstGroup", "!AAAAAAAAAAAAAAA" },
    { "BadDigitInTheLastGroup", "AAAAAAAAAAAAAAA!" },
    { "UnusedBitsOfTwo", "MB" },
    { "UnusedBitsOfFour", "AAAB" },
    { "UnusedBitsOfFourHigh", "AAAI" },
    { "UnusedBitOfFive", "AAAAB" },
    { "UnusedBitsOfSeven", "AAAAAAB" },
    { "UnusedBitsOfSevenHigh", "AAAAAAE" },
    { "UnusedBitsBehindAWholeGroup", "AAAAAAAAMB" },
};

class Base32BadTextTest : public testing::TestWithParam<BadText> { };

TEST_P(Base32BadTextTest, IsRejectedByBothKindsOfDigits)
{
    EXPECT_EQ(decoded(GetParam().text, Base32Digits::Strict), "null");
    EXPECT_EQ(decoded(GetParam().text, Base32Digits::WithBraces), "null");
}

INSTANTIATE_TEST_SUITE_P(Base32, Base32BadTextTest, testing::ValuesIn(kBadTexts),
    [](const auto& param) { return param.param.name; });

TEST(Base32Test, TakesLowerCase)
{
    EXPECT_EQ(decoded("mzxw6ytboi"), "66 6f 6f 62 61 72");
}

TEST(Base32Test, TakesEveryLetterInLowerCase)
{
    EXPECT_EQ(decoded("abcdefghijklmnopqrstuvwxyz234567"),
        "00 44 32 14 c7 42 54 b6 35 cf 84 65 3a 56 d7 c6 75 be 77 df");
}

TEST(Base32Test, TakesTheLowestUsedBitOfAPartialGroup)
{
    EXPECT_EQ(decoded("AE"), "01");
    EXPECT_EQ(decoded("AAAQ"), "00 01");
    EXPECT_EQ(decoded("AAAAC"), "00 00 01");
    EXPECT_EQ(decoded("AAAAAAI"), "00 00 00 01");
}

TEST(Base32Test, RejectsCharactersWhoseLowByteIsADigit)
{
    EXPECT_EQ(hex(lum::decodeBase32(u"M\u0159", Base32Digits::Strict)), "null");
    EXPECT_EQ(hex(lum::decodeBase32(u"M\u5159AAAAAA", Base32Digits::WithBraces)), "null");
}

TEST(Base32Test, TakesBracesForZeroWhenTold)
{
    EXPECT_EQ(decoded("M{|}AAAA", Base32Digits::WithBraces), "60 00 00 00 00");
}

TEST(Base32Test, RejectsBracesOtherwise)
{
    EXPECT_EQ(decoded("M{AAAAAA"), "null");
    EXPECT_EQ(decoded("M|AAAAAA"), "null");
    EXPECT_EQ(decoded("M}AAAAAA"), "null");
}

TEST(Base32Test, KnowsTheLengthOfEveryGroup)
{
    EXPECT_EQ(lum::base32Length(0), 0u);
    EXPECT_EQ(lum::base32Length(1), 2u);
    EXPECT_EQ(lum::base32Length(2), 4u);
    EXPECT_EQ(lum::base32Length(3), 5u);
    EXPECT_EQ(lum::base32Length(4), 7u);
    EXPECT_EQ(lum::base32Length(5), 8u);
    EXPECT_EQ(lum::base32Length(1000000001), 1600000002u);
}

TEST(Base32Test, IsNullWithoutMemory)
{
    RefusingMemory memory(0);
    EXPECT_EQ(hex(lum::decodeBase32(u"MY", Base32Digits::Strict, RefusingMemory::reallocate)), "null");
}

RC_GTEST_PROP(Base32Properties, DecodingGivesBackWhatWasEncoded, (const std::vector<std::uint8_t>& plain))
{
    auto bytes = std::as_bytes(std::span(plain));
    RC_ASSERT(decoded(encoded(bytes)) == hex(bytes));
}

RC_GTEST_PROP(Base32Properties, ADecodedTextEncodesToItself, ())
{
    auto text = *rc::gen::container<std::string>(rc::gen::elementOf(std::string("AEIQY27")));
    std::string bytes = decoded(text);
    if (bytes != "null")
        RC_ASSERT(encoded(unhex(bytes)) == text);
}

}
