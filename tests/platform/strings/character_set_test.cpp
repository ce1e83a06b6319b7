#include "platform/strings/character_set.h"

#include "tests/platform/strings/telling_text.h"
#include "tests/vector_file.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using namespace platform;

struct NamedSet {
    const char* name;
    const CharacterSet& (*set)();
};

class CharacterSetVectors : public testing::TestWithParam<NamedSet> { };

TEST_P(CharacterSetVectors, HasTheMembersExpected)
{
    const CharacterSet& set = GetParam().set();
    int rows = 0;
    for (const vectors::Row& row : vectors::load("character_sets.tsv")) {
        if (row.cell("set") != GetParam().name)
            continue;
        SCOPED_TRACE(row);
        auto point = static_cast<char32_t>(std::stoul(row.cell("code_point").substr(2), nullptr, 16));
        EXPECT_EQ(set.contains(point), row.number("member") == 1) << row.cell("code_point");
        ++rows;
    }
    EXPECT_GT(rows, 100);
}

INSTANTIATE_TEST_SUITE_P(CharacterSets, CharacterSetVectors,
    testing::Values(NamedSet { "ws", CharacterSet::whitespace },
        NamedSet { "wsnl", CharacterSet::whitespaceAndNewline }, NamedSet { "ctrl", CharacterSet::control },
        NamedSet { "lower", CharacterSet::lowercaseLetter },
        NamedSet { "digit", CharacterSet::decimalDigit }),
    [](const auto& set) { return set.param.name; });

TEST(CharacterSetTest, EmptySetHasNoMember)
{
    EXPECT_FALSE(CharacterSet().contains(0));
    EXPECT_FALSE(CharacterSet().contains(0x10FFFF));
}

TEST(CharacterSetTest, RangeEndsWhereItSays)
{
    auto set = CharacterSet::withRange(u'b', 3);
    EXPECT_FALSE(set.contains(u'a'));
    EXPECT_TRUE(set.contains(u'b'));
    EXPECT_TRUE(set.contains(u'd'));
    EXPECT_FALSE(set.contains(u'e'));
}

TEST(CharacterSetTest, RangeIsCutAtTheLastCodePoint)
{
    auto set = CharacterSet::withRange(0x10FFFE, SIZE_MAX);
    EXPECT_TRUE(set.contains(0x10FFFF));
    EXPECT_FALSE(set.contains(0x110000));
    EXPECT_EQ(CharacterSet::withRange(0x110000, 5), CharacterSet());
    EXPECT_EQ(CharacterSet::withRange(u'a', 0), CharacterSet());
}

TEST(CharacterSetTest, MembersOfATextAreCodePoints)
{
    auto set = CharacterSet::withCharacters(u"cab\U0001F600a");
    EXPECT_EQ(set, CharacterSet::withRange(u'a', 3).unitedWith(CharacterSet::withRange(0x1F600, 1)));
    EXPECT_FALSE(set.contains(0xD83D));
}

TEST(CharacterSetTest, InversionReachesFromTheFirstToTheLastCodePoint)
{
    auto all = CharacterSet().inverted();
    EXPECT_TRUE(all.contains(0));
    EXPECT_TRUE(all.contains(0xD800));
    EXPECT_TRUE(all.contains(0x10FFFF));
    EXPECT_FALSE(all.contains(0x110000));
    EXPECT_EQ(all.inverted(), CharacterSet());
}

TEST(CharacterSetTest, SetsThatAreMadeDifferentlyAreEqual)
{
    auto range = CharacterSet::withRange(u'a', 4);
    auto text = CharacterSet::withCharacters(u"dbca");
    EXPECT_EQ(range, text);
    EXPECT_EQ(range.hash(), text.hash());
    EXPECT_FALSE(range == CharacterSet::withRange(u'a', 3));
}

RC_GTEST_PROP(CharacterSetLaw, OperationsAreThoseOnMembers, ())
{
    auto left = CharacterSet::withCharacters((*tellingText()).units);
    auto right = CharacterSet::withCharacters((*tellingText()).units);
    auto either = left.unitedWith(right);
    auto neither = either.inverted();
    for (char32_t point = 0; point < 0x120; ++point) {
        RC_ASSERT(either.contains(point) == (left.contains(point) || right.contains(point)));
        RC_ASSERT(neither.contains(point) != either.contains(point));
    }
}

}
