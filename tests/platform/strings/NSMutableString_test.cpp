#include "LUMPlatform/NSMutableString.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"

namespace {

class NSMutableStringTest : public ObjectTest {
protected:
    NSRef<NSMutableString> mText = NSMutableString::stringWithString("abc");
};

TEST_F(NSMutableStringTest, StartsEmptyOrWithAText)
{
    EXPECT_EQ(NSMutableString::string()->length(), 0U);
    EXPECT_EQ(mText->utf8(), "abc");
    EXPECT_EQ(NSMutableString::stringWithString(nullptr)->length(), 0U);
}

TEST_F(NSMutableStringTest, Appends)
{
    mText->appendString("de");
    mText->appendString(nullptr);
    mText->appendFormat("-%d", 7);
    EXPECT_EQ(mText->utf8(), "abcde-7");
    EXPECT_EQ(mText->length(), 7U);
    EXPECT_EQ(mText->characters(), u"abcde-7");
}

TEST_F(NSMutableStringTest, AppendsItself)
{
    for (int i = 0; i < 6; ++i)
        mText->appendString(mText);
    EXPECT_EQ(mText->length(), 3U * 64);
    EXPECT_TRUE(mText->hasSuffix("abcabc"));
}

TEST_F(NSMutableStringTest, InsertsAndDeletes)
{
    mText->insertString("--", 1);
    EXPECT_EQ(mText->utf8(), "a--bc");
    mText->insertString("!", 5);
    EXPECT_EQ(mText->utf8(), "a--bc!");
    mText->deleteCharactersInRange({ 0, 3 });
    EXPECT_EQ(mText->utf8(), "bc!");
    mText->replaceCharactersInRange({ 1, 1 }, "xyz");
    EXPECT_EQ(mText->utf8(), "bxyz!");
}

TEST_F(NSMutableStringTest, PositionBeyondTheEndRaisesAndChangesNothing)
{
    EXPECT_THROW(mText->insertString("x", 4), NSException);
    EXPECT_THROW(mText->deleteCharactersInRange({ 3, 1 }), NSException);
    EXPECT_THROW(mText->deleteCharactersInRange({ NSNotFound, 1 }), NSException);
    EXPECT_THROW((void)mText->replaceOccurrencesOfString("a", "b", NSNoSearchOptions, { 1, 3 }), NSException);
    EXPECT_EQ(mText->utf8(), "abc");
}

TEST_F(NSMutableStringTest, ReplacesOccurrencesWithoutOverlaps)
{
    mText->setString("aaaaXaXa");
    EXPECT_EQ(mText->replaceOccurrencesOfString("aa", "b", NSNoSearchOptions, { 0, 8 }), 2U);
    EXPECT_EQ(mText->utf8(), "bbXaXa");
    EXPECT_EQ(mText->replaceOccurrencesOfString("x", "-", NSCaseInsensitiveSearch, { 0, 4 }), 1U);
    EXPECT_EQ(mText->utf8(), "bb-aXa");
    EXPECT_EQ(mText->replaceOccurrencesOfString("", "-", NSNoSearchOptions, { 0, 6 }), 0U);
    EXPECT_EQ(mText->replaceOccurrencesOfString("b", nullptr, NSNoSearchOptions, { 0, 6 }), 2U);
    EXPECT_EQ(mText->utf8(), "-aXa");
}

TEST_F(NSMutableStringTest, TakesANewText)
{
    mText->setString("x");
    EXPECT_EQ(mText->utf8(), "x");
    mText->setString(mText);
    EXPECT_EQ(mText->utf8(), "x");
    mText->setString(nullptr);
    EXPECT_EQ(mText->length(), 0U);
}

TEST_F(NSMutableStringTest, AnswersDynamicCalls)
{
    NSSend<void>(mText, NSSelector("appendString:"), NSRef<NSString>("d"));
    EXPECT_EQ(NSSend<NSUInteger>(mText, NSSelector("length")), 4U);
}

}
