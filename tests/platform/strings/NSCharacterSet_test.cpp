#include "LUMPlatform/NSCharacterSet.h"

#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

namespace {

class NSCharacterSetTest : public ObjectTest { };

TEST_F(NSCharacterSetTest, NamedSetsAreAlwaysTheSameObjects)
{
    EXPECT_EQ(NSCharacterSet::whitespaceCharacterSet(), NSCharacterSet::whitespaceCharacterSet());
    EXPECT_NE(NSCharacterSet::whitespaceCharacterSet(), NSCharacterSet::whitespaceAndNewlineCharacterSet());
}

TEST_F(NSCharacterSetTest, NamedSetsHaveTheirMembers)
{
    EXPECT_TRUE(NSCharacterSet::whitespaceCharacterSet()->characterIsMember(0x200B));
    EXPECT_FALSE(NSCharacterSet::whitespaceCharacterSet()->characterIsMember(u'\n'));
    EXPECT_TRUE(NSCharacterSet::whitespaceAndNewlineCharacterSet()->characterIsMember(u'\n'));
    EXPECT_TRUE(NSCharacterSet::controlCharacterSet()->characterIsMember(0xAD));
    EXPECT_TRUE(NSCharacterSet::lowercaseLetterCharacterSet()->characterIsMember(u'\u00e9'));
    EXPECT_TRUE(NSCharacterSet::decimalDigitCharacterSet()->longCharacterIsMember(U'\U0001D7CE'));
}

TEST_F(NSCharacterSetTest, IsMadeFromATextOrARange)
{
    auto text = NSCharacterSet::characterSetWithCharactersInString("cba");
    auto range = NSCharacterSet::characterSetWithRange({ u'a', 3 });
    EXPECT_TRUE(text->isEqual(range));
    EXPECT_EQ(text->hash(), range->hash());
    EXPECT_FALSE(text->isEqual(NSCharacterSet::characterSetWithRange({ u'a', 4 })));
    EXPECT_FALSE(text->isEqual(NSRef<NSString>("cba")));
    EXPECT_FALSE(NSCharacterSet::characterSetWithCharactersInString(nullptr)->characterIsMember(u'a'));
    EXPECT_FALSE(NSCharacterSet::characterSetWithRange({ NSNotFound, 3 })->characterIsMember(u'a'));
}

TEST_F(NSCharacterSetTest, Inverts)
{
    auto others = NSCharacterSet::characterSetWithCharactersInString("a")->invertedSet();
    EXPECT_FALSE(others->characterIsMember(u'a'));
    EXPECT_TRUE(others->characterIsMember(u'b'));
    EXPECT_TRUE(others->longCharacterIsMember(U'\U0001F600'));
}

TEST_F(NSCharacterSetTest, CopyIsItself)
{
    auto set = NSCharacterSet::characterSetWithCharactersInString("a");
    EXPECT_EQ(set->copy().get(), set.get());
}

TEST_F(NSCharacterSetTest, AnswersDynamicCalls)
{
    auto set = NSCharacterSet::decimalDigitCharacterSet();
    EXPECT_TRUE(NSSend<bool>(set, NSSelector("characterIsMember:"), 0x37));
}

}
