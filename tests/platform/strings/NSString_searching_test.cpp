#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSCharacterSet.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

namespace {

class NSStringSearchingTest : public ObjectTest {
protected:
    NSRef<NSString> mText = "abcABCabc";
};

constexpr NSRange kNowhere { NSNotFound, 0 };

TEST_F(NSStringSearchingTest, FindsByOptions)
{
    EXPECT_EQ(mText->rangeOfString("bc"), (NSRange { 1, 2 }));
    EXPECT_EQ(mText->rangeOfString("bd"), kNowhere);
    EXPECT_EQ(mText->rangeOfStringOptions("bc", NSBackwardsSearch), (NSRange { 7, 2 }));
    EXPECT_EQ(mText->rangeOfStringOptions("CAB", NSCaseInsensitiveSearch), (NSRange { 2, 3 }));
    EXPECT_EQ(mText->rangeOfStringOptions("bc", NSAnchoredSearch), kNowhere);
}

TEST_F(NSStringSearchingTest, EmptyAndNullTextsAreNowhere)
{
    EXPECT_EQ(mText->rangeOfString(""), kNowhere);
    EXPECT_EQ(mText->rangeOfString(nullptr), kNowhere);
    EXPECT_FALSE(mText->hasPrefix(""));
    EXPECT_FALSE(mText->hasPrefix(nullptr));
    EXPECT_FALSE(mText->hasSuffix(""));
    EXPECT_FALSE(mText->hasSuffix(nullptr));
}

TEST_F(NSStringSearchingTest, SearchesARangeInPlacesOfTheWhole)
{
    EXPECT_EQ(mText->rangeOfStringOptionsRange("bc", NSNoSearchOptions, { 2, 7 }), (NSRange { 7, 2 }));
    EXPECT_EQ(mText->rangeOfStringOptionsRange("bc", NSNoSearchOptions, { 2, 6 }), kNowhere);
    EXPECT_THROW((void)mText->rangeOfStringOptionsRange("bc", NSNoSearchOptions, { 2, 8 }), NSException);
}

TEST_F(NSStringSearchingTest, FindsCharactersOfASet)
{
    auto set = NSCharacterSet::characterSetWithCharactersInString("BC");
    EXPECT_EQ(mText->rangeOfCharacterFromSet(set), (NSRange { 4, 1 }));
    EXPECT_EQ(mText->rangeOfCharacterFromSetOptions(set, NSBackwardsSearch), (NSRange { 5, 1 }));
    EXPECT_EQ(mText->rangeOfCharacterFromSet(NSCharacterSet::decimalDigitCharacterSet()), kNowhere);
    EXPECT_EQ(mText->rangeOfCharacterFromSet(nullptr), kNowhere);
}

TEST_F(NSStringSearchingTest, DeliberatelyIgnoringCaseHasNoEffectOnASet)
{
    auto lower = NSCharacterSet::lowercaseLetterCharacterSet();
    EXPECT_EQ(
        NSRef<NSString>("2B3")->rangeOfCharacterFromSetOptions(lower, NSCaseInsensitiveSearch), kNowhere);
    EXPECT_EQ(NSRef<NSString>("2b3")->rangeOfCharacterFromSetOptions(lower, NSCaseInsensitiveSearch),
        (NSRange { 1, 1 }));
}

TEST_F(NSStringSearchingTest, KnowsItsEnds)
{
    EXPECT_TRUE(mText->hasPrefix("abcA"));
    EXPECT_FALSE(mText->hasPrefix("bc"));
    EXPECT_TRUE(mText->hasSuffix("Cabc"));
    EXPECT_FALSE(mText->hasSuffix("ab"));
    EXPECT_FALSE(mText->hasSuffix("xabcABCabc"));
}

TEST_F(NSStringSearchingTest, SplitsAndKeepsEmptyPieces)
{
    NSRef<NSString> text = "1..2";
    EXPECT_TRUE(text->componentsSeparatedByString(".")->isEqual(NSArray::of("1", "", "2")));
    EXPECT_TRUE(text->componentsSeparatedByString(nullptr)->isEqual(NSArray::of("1..2")));
    EXPECT_TRUE(NSString::string()->componentsSeparatedByString(".")->isEqual(NSArray::of("")));
}

TEST_F(NSStringSearchingTest, Appends)
{
    EXPECT_EQ(mText->stringByAppendingString("d")->utf8(), "abcABCabcd");
    EXPECT_EQ(mText->stringByAppendingString(nullptr)->utf8(), "abcABCabc");
    EXPECT_EQ(mText->stringByAppendingFormat("-%d", 7)->utf8(), "abcABCabc-7");
}

TEST_F(NSStringSearchingTest, TrimsBothEnds)
{
    NSRef<NSString> text = " \ta b\n ";
    EXPECT_EQ(
        text->stringByTrimmingCharactersInSet(NSCharacterSet::whitespaceCharacterSet())->utf8(), "a b\n");
    EXPECT_EQ(
        text->stringByTrimmingCharactersInSet(NSCharacterSet::whitespaceAndNewlineCharacterSet())->utf8(),
        "a b");
    EXPECT_EQ(text->stringByTrimmingCharactersInSet(nullptr)->utf8(), " \ta b\n ");
}

TEST_F(NSStringSearchingTest, MapsCaseWithoutALocale)
{
    EXPECT_EQ(NSRef<NSString>("Stra\u00dfe I")->uppercaseString()->utf8(), "STRASSE I");
    EXPECT_EQ(NSRef<NSString>("STRASSE I")->lowercaseString()->utf8(), "strasse i");
    EXPECT_EQ(NSRef<NSString>("\u0130")->lowercaseString()->utf8(), "i\u0307");
    EXPECT_EQ(NSString::string()->uppercaseString()->utf8(), "");
    std::string many(100, 's');
    std::string sharp;
    for (int i = 0; i < 50; ++i)
        sharp += "\u00df";
    EXPECT_EQ(NSRef<NSString>(sharp)->uppercaseString()->lowercaseString()->utf8(), many);
}

TEST_F(NSStringSearchingTest, ReadsNumbers)
{
    NSRef<NSString> text = " 2147483648.75x";
    EXPECT_EQ(text->intValue(), 2147483647);
    EXPECT_EQ(text->integerValue(), 2147483648);
    EXPECT_EQ(text->longLongValue(), 2147483648);
    EXPECT_EQ(text->doubleValue(), 2147483648.75);
    EXPECT_EQ(text->floatValue(), 2147483648.0f);
    EXPECT_TRUE(text->boolValue());
    EXPECT_FALSE(NSString::string()->boolValue());
    for (const char* zeros : { "0 0", "0 00", "00 0", "-0 0", "0" })
        EXPECT_FALSE(NSRef<NSString>(zeros)->boolValue()) << zeros;
}

}
