#include "platform/strings/utf16_compare.h"

#include "tests/platform/strings/plain_compare.h"
#include "tests/platform/strings/telling_text.h"
#include "tests/vector_file.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unicode/unistr.h>
#include <unicode/unorm2.h>

namespace {

using namespace platform;

ComparisonRules rulesOf(unsigned options)
{
    return { { !(options & 2), (options & 1) != 0 }, (options & 64) != 0 };
}

class CompareVectors : public testing::TestWithParam<vectors::Row> { };

TEST_P(CompareVectors, OrderAsExpected)
{
    const vectors::Row& row = GetParam();
    std::u16string a = row.text("a_json");
    std::u16string b = row.text("b_json");
    EXPECT_EQ(compareUtf16(a, b, rulesOf(0)), row.number("opt0"));
    EXPECT_EQ(compareUtf16(a, b, rulesOf(1)), row.number("opt1"));
    EXPECT_EQ(compareUtf16(a, b, rulesOf(64)), row.number("opt64"));
    EXPECT_EQ(compareUtf16(a, b, rulesOf(65)), row.number("opt65"));
}

INSTANTIATE_TEST_SUITE_P(NumericCompare, CompareVectors,
    testing::ValuesIn(vectors::load("numeric_compare.tsv")),
    [](const auto& row) { return row.param.name(); });

TEST(CompareTest, SetsReorderedMarksEqual)
{
    EXPECT_EQ(compareUtf16(u"xe\u0301\u0323", u"xe\u0323\u0301", rulesOf(0)), 0);
    EXPECT_EQ(compareUtf16(u"\u00e9\u0323", u"\u1eb9\u0301", rulesOf(0)), 0);
    EXPECT_NE(compareUtf16(u"xe\u0301\u0323", u"xe\u0323\u0301", rulesOf(2)), 0);
}

TEST(CompareTest, MarkThatSortsInFrontDecides)
{
    // The second text is longer, and yet its mark of the lower class comes first after decomposition.
    EXPECT_EQ(compareUtf16(u"e\u0315", u"e\u0315\u0301", rulesOf(0)), 1);
}

TEST(CompareTest, HangulSyllableEqualsItsLetters)
{
    EXPECT_EQ(compareUtf16(u"\uac01", u"\u1100\u1161\u11a8", rulesOf(0)), 0);
}

TEST(CompareTest, LigatureMayEndInsideAnotherText)
{
    EXPECT_EQ(compareUtf16(u"\ufb01x", u"fix", rulesOf(1)), 0);
    EXPECT_EQ(compareUtf16(u"\ufb01", u"f", rulesOf(1)), 1);
    EXPECT_EQ(compareUtf16(u"f", u"\ufb01", rulesOf(1)), -1);
}

TEST(CompareTest, LiteralComparisonStillIgnoresCase)
{
    EXPECT_EQ(compareUtf16(u"\u00c9", u"\u00e9", rulesOf(3)), 0);
    EXPECT_NE(compareUtf16(u"E\u0301", u"\u00e9", rulesOf(3)), 0);
}

TEST(CompareTest, SupplementaryCharactersComeLast)
{
    EXPECT_EQ(compareUtf16(u"\uffee", u"\U0001F600", rulesOf(0)), -1);
    EXPECT_EQ(compareUtf16(u"\uffee", u"\U0001F600", rulesOf(2)), -1);
    EXPECT_EQ(compareUtf16(u"\U0001F600", u"\U0001F601", rulesOf(2)), -1);
}

TEST(CompareTest, NumbersBehindMarksAreStillNumbers)
{
    EXPECT_EQ(compareUtf16(u"e\u0301"
                           u"9",
                  u"\u00e9"
                  u"10",
                  rulesOf(64)),
        -1);
    EXPECT_EQ(compareUtf16(u"01\u0301", u"1\u0301", rulesOf(64)), 0);
}

TEST(CompareTest, DeliberatelyTheValueOfDigitsWraps)
{
    EXPECT_EQ(compareUtf16(u"18446744073709551616", u"0", rulesOf(64)), 0);
}

TEST(CompareTest, HostileRunOfMarksIsQuick)
{
    std::u16string marks = u"e";
    for (int i = 0; i < 200000; ++i)
        marks += i % 2 ? u'\u0323' : u'\u0301';
    EXPECT_EQ(compareUtf16(marks, marks + u'a', rulesOf(0)), -1);
    EXPECT_EQ(compareUtf16(marks, marks.substr(0, marks.size() - 1), rulesOf(1)), 1);
}

TEST(CompareTest, FoldingKeepsTextDecomposed)
{
    // What the stream relies on: a character that is decomposed folds to itself or to starters that are.
    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2* nfd = unorm2_getNFDInstance(&error);
    for (UChar32 point = 0; point <= 0x10FFFF; ++point) {
        icu::UnicodeString character(point);
        icu::UnicodeString folded = icu::UnicodeString(character).foldCase();
        if (folded == character
            || !unorm2_isNormalized(nfd, character.getBuffer(), character.length(), &error))
            continue;
        EXPECT_TRUE(unorm2_isNormalized(nfd, folded.getBuffer(), folded.length(), &error)) << point;
        for (std::int32_t i = 0; i < folded.length(); i = folded.moveIndex32(i, 1))
            EXPECT_EQ(u_getCombiningClass(folded.char32At(i)), 0) << point;
    }
}

RC_GTEST_PROP(CompareLaw, ShortCutsChangeNothing, ())
{
    auto a = *tellingText();
    auto b = tellingTextOrChange(a);
    unsigned options = *rc::gen::inRange(0U, 4U);
    RC_ASSERT(compareUtf16(a.units, b.units, rulesOf(options))
        == plainCompare(a.units, b.units, rulesOf(options).equivalence));
}

RC_GTEST_PROP(CompareLaw, EveryTextEqualsItself, ())
{
    auto a = *tellingText();
    for (unsigned options : { 0U, 1U, 2U, 3U, 64U, 65U, 66U, 67U })
        RC_ASSERT(compareUtf16(a.units, a.units, rulesOf(options)) == 0);
}

RC_GTEST_PROP(CompareLaw, SwappingTheTextsTurnsTheAnswer, ())
{
    auto a = *tellingText();
    auto b = tellingTextOrChange(a);
    for (unsigned options : { 0U, 1U, 2U, 3U, 64U, 65U, 66U, 67U })
        RC_ASSERT(compareUtf16(a.units, b.units, rulesOf(options))
            == -compareUtf16(b.units, a.units, rulesOf(options)));
}

// Numeric comparison is transitive too: all digits lie together between the other characters, so a number
// stands to every other character as each of its digits would.
RC_GTEST_PROP(CompareLaw, OrderIsTransitive, ())
{
    auto a = *tellingText();
    auto b = tellingTextOrChange(a);
    auto c = tellingTextOrChange(b);
    for (unsigned options : { 0U, 1U, 2U, 3U, 64U, 65U, 66U, 67U }) {
        int ab = compareUtf16(a.units, b.units, rulesOf(options));
        int bc = compareUtf16(b.units, c.units, rulesOf(options));
        if (ab <= 0 && bc <= 0)
            RC_ASSERT(compareUtf16(a.units, c.units, rulesOf(options)) == (ab == 0 && bc == 0 ? 0 : -1));
    }
}

RC_GTEST_PROP(CompareLaw, LiterallyEqualTextsAreEqualUnderEveryOption, ())
{
    auto a = *tellingText();
    auto b = tellingTextOrChange(a);
    RC_ASSERT((compareUtf16(a.units, b.units, rulesOf(2)) == 0) == (a.units == b.units));
    if (compareUtf16(a.units, b.units, rulesOf(0)) == 0)
        RC_ASSERT(compareUtf16(a.units, b.units, rulesOf(1)) == 0);
}

}
