#include "platform/strings/utf16_search.h"

#include "tests/platform/strings/telling_text.h"
#include "tests/vector_file.h"

#include "platform/strings/utf16_compare.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace platform {

std::ostream& operator<<(std::ostream& stream, const TextRange& range)
{
    return stream << '{' << range.location << ", " << range.length << '}';
}

}

namespace {

using namespace platform;

constexpr SearchRules kPlain {};
constexpr SearchRules kLiteral { { false, false }, false, false };
constexpr SearchRules kIgnoringCase { { true, true }, false, false };
constexpr SearchRules kBackwards { {}, true, false };
constexpr SearchRules kAnchored { {}, false, true };
constexpr SearchRules kAnchoredBackwards { {}, true, true };

using Found = std::optional<TextRange>;

Found at(std::size_t location, std::size_t length)
{
    return TextRange { location, length };
}

TEST(SearchTest, FindsTheFirstAndTheLast)
{
    EXPECT_EQ(findText(u"abcabc", u"bc", kPlain), at(1, 2));
    EXPECT_EQ(findText(u"abcabc", u"bc", kBackwards), at(4, 2));
    EXPECT_EQ(findText(u"abcabc", u"bd", kPlain), std::nullopt);
    EXPECT_EQ(findText(u"abcabc", u"bd", kBackwards), std::nullopt);
}

TEST(SearchTest, EmptyTextIsNowhere)
{
    EXPECT_EQ(findText(u"abc", u"", kPlain), std::nullopt);
    EXPECT_EQ(findText(u"", u"", kAnchored), std::nullopt);
    EXPECT_EQ(findText(u"", u"a", kPlain), std::nullopt);
    EXPECT_EQ(findText(u"", u"a", kAnchored), std::nullopt);
    EXPECT_EQ(findText(u"", u"a", kAnchoredBackwards), std::nullopt);
}

TEST(SearchTest, AnchorsAtEitherEnd)
{
    EXPECT_EQ(findText(u"abcab", u"ab", kAnchored), at(0, 2));
    EXPECT_EQ(findText(u"abcab", u"ab", kAnchoredBackwards), at(3, 2));
    EXPECT_EQ(findText(u"abcab", u"bc", kAnchored), std::nullopt);
    EXPECT_EQ(findText(u"abcab", u"bc", kAnchoredBackwards), std::nullopt);
}

TEST(SearchTest, AnchorsUnitsAtEitherEnd)
{
    EXPECT_EQ(findText(u"abcab", u"ab", { { false, false }, false, true }), at(0, 2));
    EXPECT_EQ(findText(u"abcab", u"ab", { { false, false }, true, true }), at(3, 2));
    EXPECT_EQ(findText(u"abcab", u"bc", { { false, false }, false, true }), std::nullopt);
    EXPECT_EQ(findText(u"abcab", u"bc", { { false, false }, true, true }), std::nullopt);
}

TEST(SearchTest, FindsCanonicalEquivalentsUnlessLiteral)
{
    EXPECT_EQ(findText(u"xe\u0301y", u"\u00e9", kPlain), at(1, 2));
    EXPECT_EQ(findText(u"x\u00e9y", u"e\u0301", kPlain), at(1, 1));
    EXPECT_EQ(findText(u"x\u00e9y", u"e\u0301", kLiteral), std::nullopt);
    EXPECT_EQ(findText(u"x\u00e9y", u"e\u0301", kBackwards), at(1, 1));
    EXPECT_EQ(findText(u"xye\u0301", u"\u00e9", kAnchoredBackwards), at(2, 2));
}

TEST(SearchTest, DoesNotEndInFrontOfAMark)
{
    EXPECT_EQ(findText(u"e\u0301xe", u"e", kPlain), at(3, 1));
    EXPECT_EQ(findText(u"e\u0301x", u"e", kLiteral), at(0, 1));
    EXPECT_EQ(findText(u"e\u0301x", u"e", kAnchored), std::nullopt);
    EXPECT_EQ(findText(u"\u00e9", u"e", kPlain), std::nullopt);
}

TEST(SearchTest, MarkAloneIsFoundUnitByUnit)
{
    EXPECT_EQ(findText(u"e\u0301x", u"\u0301", kPlain), at(1, 1));
}

TEST(SearchTest, IgnoresCaseByFullFolding)
{
    EXPECT_EQ(findText(u"Stra\u00dfe", u"STRASSE", kIgnoringCase), at(0, 6));
    EXPECT_EQ(findText(u"STRASSE", u"\u00df", kIgnoringCase), at(4, 2));
    EXPECT_EQ(findText(u"a\u00dfe", u"s", kIgnoringCase), std::nullopt);
    EXPECT_EQ(findText(u"273 \u212a", u"k", kIgnoringCase), at(4, 1));
    EXPECT_EQ(findText(u"ABC", u"b", kPlain), std::nullopt);
}

TEST(SearchTest, DoesNotBeginInsideAPair)
{
    const char16_t trail[] = { 0xDE00 };
    EXPECT_EQ(findText(u"\U0001F600", { trail, 1 }, kPlain), std::nullopt);
    EXPECT_EQ(findText(u"\U0001F600", { trail, 1 }, kLiteral), at(1, 1));
}

TEST(SearchTest, FindsACharacterOfASet)
{
    auto set = CharacterSet::withCharacters(u"x\U0001F600");
    EXPECT_EQ(findCharacter(u"axbx", set, kPlain), at(1, 1));
    EXPECT_EQ(findCharacter(u"axbx", set, kBackwards), at(3, 1));
    EXPECT_EQ(findCharacter(u"a\U0001F600b", set, kPlain), at(1, 2));
    EXPECT_EQ(findCharacter(u"a\U0001F600b", set, kBackwards), at(1, 2));
    EXPECT_EQ(findCharacter(u"ab", set, kPlain), std::nullopt);
    EXPECT_EQ(findCharacter(u"ab", set, kBackwards), std::nullopt);
    EXPECT_EQ(findCharacter(u"", set, kBackwards), std::nullopt);
    EXPECT_EQ(findCharacter(u"ax", set, kAnchored), std::nullopt);
    EXPECT_EQ(findCharacter(u"a\U0001F600", set, kAnchoredBackwards), at(1, 2));
}

TEST(SearchTest, CaseHasNoEffectOnASet)
{
    EXPECT_EQ(findCharacter(u"B", CharacterSet::lowercaseLetter(), kIgnoringCase), std::nullopt);
}

class SplitVectors : public testing::TestWithParam<vectors::Row> { };

TEST_P(SplitVectors, SplitAsExpected)
{
    std::u16string text = GetParam().text("string_json");
    std::u16string separator = GetParam().text("separator_json");
    std::vector<std::u16string_view> expected;
    vectors::Json pieces = GetParam().json("expected_json");
    for (const vectors::Json& piece : pieces.items)
        expected.push_back(piece.text);
    EXPECT_EQ(splitText(text, separator), expected);
}

INSTANTIATE_TEST_SUITE_P(ComponentsSeparated, SplitVectors,
    testing::ValuesIn(vectors::load("components_separated.tsv")),
    [](const auto& row) { return row.param.name(); });

class TrimVectors : public testing::TestWithParam<vectors::Row> { };

TEST_P(TrimVectors, TrimAsExpected)
{
    std::u16string text = GetParam().text("string_json");
    EXPECT_EQ(trimmedText(text, CharacterSet::whitespaceAndNewline()), GetParam().text("trimmed_json"));
}

INSTANTIATE_TEST_SUITE_P(TrimWhitespace, TrimVectors, testing::ValuesIn(vectors::load("trim_whitespace.tsv")),
    [](const auto& row) { return row.param.name(); });

RC_GTEST_PROP(SearchLaw, WhatIsFoundComparesEqual, ())
{
    std::u16string text = (*tellingText()).units;
    std::u16string sought = (*rc::gen::resize(2, tellingText())).units;
    SearchRules rules { { *rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>() },
        *rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>() };
    Found found = findText(text, sought, rules);
    if (!found)
        return;
    std::size_t end = found->location + found->length;
    std::u16string_view piece = std::u16string_view(text).substr(found->location, found->length);
    RC_ASSERT(compareUtf16(piece, sought, { rules.equivalence, false }) == 0);
    if (rules.anchored)
        RC_ASSERT((rules.backwards ? end == text.size() : found->location == 0U));
}

RC_GTEST_PROP(SearchLaw, SearchesFindTheSamePlaceFromEitherEndWhenThereIsOne, ())
{
    std::u16string text = (*tellingText()).units;
    std::u16string sought = (*rc::gen::resize(2, tellingText())).units;
    Equivalence equivalence { *rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>() };
    Found first = findText(text, sought, { equivalence, false, false });
    Found last = findText(text, sought, { equivalence, true, false });
    RC_ASSERT(first.has_value() == last.has_value());
    if (first)
        RC_ASSERT(first->location <= last->location);
}

RC_GTEST_PROP(SearchLaw, PiecesAndSeparatorsMakeTheText, ())
{
    std::u16string text = (*tellingText()).units;
    std::u16string separator = (*rc::gen::resize(1, tellingText())).units;
    auto pieces = splitText(text, separator);
    std::u16string joined;
    for (std::size_t i = 0; i < pieces.size(); ++i)
        joined.append(i ? separator : u"").append(pieces[i]);
    RC_ASSERT(compareUtf16(joined, text, { kPlain.equivalence, false }) == 0);
}

}
