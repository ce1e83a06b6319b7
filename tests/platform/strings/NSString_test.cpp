#include "LUMPlatform/NSString.h"

#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/platform/strings/telling_text.h"
#include "tests/raised_by.h"

#include <rapidcheck/gtest.h>
#include <sstream>
#include <unordered_set>

namespace {

class NSStringTest : public ObjectTest { };

TEST_F(NSStringTest, IsMadeFromUtf8AndFromUtf16)
{
    NSRef<NSString> fromLiteral = "caf\u00e9";
    NSRef<NSString> fromView = std::string_view("caf\u00e9");
    NSRef<NSString> fromString = std::string("caf\u00e9");
    NSRef<NSString> fromUtf16 = u"caf\u00e9";
    EXPECT_EQ(fromLiteral->characters(), u"caf\u00e9");
    EXPECT_EQ(fromView->characters(), u"caf\u00e9");
    EXPECT_EQ(fromString->characters(), u"caf\u00e9");
    EXPECT_EQ(fromUtf16->utf8(), "caf\u00e9");
}

TEST_F(NSStringTest, NullCStringIsANullReference)
{
    const char* none = nullptr;
    NSRef<NSString> text = none;
    EXPECT_FALSE(text);
}

TEST_F(NSStringTest, IllFormedUtf8IsANullReference)
{
    NSRef<NSString> text = "a\xFF";
    EXPECT_FALSE(text);
    EXPECT_FALSE(NSString::stringWithUTF8String("\xC3"));
}

TEST_F(NSStringTest, CountsCodeUnits)
{
    NSRef<NSString> text = "a\U0001F600";
    EXPECT_EQ(text->length(), 3U);
    EXPECT_EQ(text->characterAtIndex(0), u'a');
    EXPECT_EQ(text->characterAtIndex(1), 0xD83D);
}

TEST_F(NSStringTest, KeepsALoneSurrogateAndReplacesItInUtf8)
{
    const char16_t units[] = { u'a', 0xD800, u'b' };
    auto text = NSString::stringWithCharacters({ units, 3 });
    EXPECT_EQ(text->length(), 3U);
    EXPECT_EQ(text->utf8(), "a\uFFFDb");
}

TEST_F(NSStringTest, IsWrittenInPlaceByItsMaker)
{
    auto text = NSString::stringWithLength(3, [](char16_t* characters) {
        for (char16_t unit = u'x'; unit <= u'z'; ++unit)
            *characters++ = unit;
    });
    EXPECT_EQ(text->utf8(), "xyz");
}

TEST_F(NSStringTest, EmbeddedNulIsACharacter)
{
    NSRef<NSString> text = std::string_view("a\0b", 3);
    EXPECT_EQ(text->length(), 3U);
    EXPECT_EQ(text->utf8(), std::string("a\0b", 3));
}

TEST_F(NSStringTest, IndexBeyondTheEndRaises)
{
    NSRef<NSString> text = "abc";
    EXPECT_EQ(nameRaisedBy([&] { (void)text->characterAtIndex(3); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] { (void)text->characterAtIndex(NSNotFound); }), "NSRangeException");
}

TEST_F(NSStringTest, RangeErrorSaysWhereTheTextEnds)
{
    NSRef<NSString> text = "abc";
    EXPECT_EQ(raisedBy([&] {
        (void)text->substringWithRange({ 2, 2 });
    }),
        "NSRangeException: range {2, 2} is beyond the end of 3 characters");
}

TEST_F(NSStringTest, CutsSubstrings)
{
    NSRef<NSString> text = "abcde";
    EXPECT_EQ(text->substringFromIndex(2)->utf8(), "cde");
    EXPECT_EQ(text->substringFromIndex(5)->utf8(), "");
    EXPECT_EQ(text->substringToIndex(2)->utf8(), "ab");
    EXPECT_EQ(text->substringToIndex(0)->utf8(), "");
    EXPECT_EQ(text->substringWithRange({ 1, 3 })->utf8(), "bcd");
    EXPECT_EQ(text->substringWithRange({ 5, 0 })->utf8(), "");
}

TEST_F(NSStringTest, SubstringBeyondTheEndRaises)
{
    NSRef<NSString> text = "abc";
    EXPECT_EQ(nameRaisedBy([&] { (void)text->substringFromIndex(4); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] { (void)text->substringToIndex(4); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] {
        (void)text->substringWithRange({ 1, ~NSUInteger { 0 } });
    }),
        "NSRangeException");
}

TEST_F(NSStringTest, EqualityIsThatOfCodeUnits)
{
    NSRef<NSString> text = "caf\u00e9";
    EXPECT_TRUE(text->isEqual(NSRef<NSString>("caf\u00e9")));
    EXPECT_TRUE(text->isEqualToString("caf\u00e9"));
    EXPECT_FALSE(text->isEqualToString("cafe\u0301"));
    EXPECT_FALSE(text->isEqualToString("Caf\u00e9"));
    EXPECT_FALSE(text->isEqualToString(nullptr));
    EXPECT_FALSE(text->isEqual(nullptr));
    EXPECT_FALSE(text->isEqual(NSNull::null()));
}

TEST_F(NSStringTest, EqualsAMutableStringOfTheSameText)
{
    NSRef<NSString> text = "abc";
    NSRef<NSString> mutableText = NSMutableString::stringWithString("abc");
    EXPECT_TRUE(text->isEqual(mutableText));
    EXPECT_TRUE(mutableText->isEqual(text));
    EXPECT_EQ(text->hash(), mutableText->hash());
}

RC_GTEST_PROP(NSStringLaw, EqualStringsHaveEqualHashes, ())
{
    std::u16string text = (*anyText()).units;
    auto a = NSString::stringWithCharacters(text);
    auto b = NSMutableString::stringWithString(a);
    RC_ASSERT(a->isEqual(b));
    RC_ASSERT(a->hash() == b->hash());
}

TEST_F(NSStringTest, NeighbouringTextsHashApart)
{
    std::unordered_set<NSUInteger> hashes;
    for (int i = 0; i < 1000; ++i)
        hashes.insert(NSString::stringWithFormat("Take %d", i)->hash());
    EXPECT_GT(hashes.size(), 990U);
}

TEST_F(NSStringTest, CopyOfAnImmutableStringIsItself)
{
    NSRef<NSString> text = "abc";
    EXPECT_EQ(text->copy().get(), text.get());
    EXPECT_EQ(NSString::stringWithString(text), text);
}

TEST_F(NSStringTest, CopyOfAMutableStringIsImmutable)
{
    auto mutableText = NSMutableString::stringWithString("abc");
    auto copy = NSCast<NSString>(mutableText->copy());
    auto made = NSString::stringWithString(mutableText);
    mutableText->appendString("d");
    EXPECT_EQ(copy->utf8(), "abc");
    EXPECT_FALSE(NSCast<NSMutableString>(copy));
    EXPECT_EQ(made->utf8(), "abc");
}

TEST_F(NSStringTest, MutableCopyLeavesTheOriginalAlone)
{
    NSRef<NSString> text = "abc";
    auto copy = NSCast<NSMutableString>(text->mutableCopy());
    ASSERT_TRUE(copy);
    copy->appendString("d");
    EXPECT_EQ(copy->utf8(), "abcd");
    EXPECT_EQ(text->utf8(), "abc");
}

TEST_F(NSStringTest, StringWithoutTextIsEmpty)
{
    EXPECT_EQ(NSString::string()->length(), 0U);
    EXPECT_EQ(NSString::stringWithString(nullptr)->length(), 0U);
}

TEST_F(NSStringTest, PrintsItself)
{
    std::ostringstream stream;
    stream << NSRef<NSString>("caf\u00e9");
    EXPECT_EQ(stream.str(), "caf\u00e9");
}

TEST_F(NSStringTest, ComparesByOptions)
{
    NSRef<NSString> text = "Take 2";
    EXPECT_EQ(text->compare("Take 10"), NSOrderedDescending);
    EXPECT_EQ(text->compareOptions("Take 10", NSNumericSearch), NSOrderedAscending);
    EXPECT_EQ(text->compareOptions("take 2", NSNumericSearch | NSCaseInsensitiveSearch), NSOrderedSame);
    EXPECT_EQ(text->caseInsensitiveCompare("TAKE 2"), NSOrderedSame);
    EXPECT_EQ(text->compare("TAKE 2"), NSOrderedDescending);
}

TEST_F(NSStringTest, ComparesCanonicalEquivalentsAsEqualUnlessLiteral)
{
    NSRef<NSString> text = "e\u0301";
    EXPECT_EQ(text->compare("\u00e9"), NSOrderedSame);
    EXPECT_EQ(text->compareOptions("\u00e9", NSLiteralSearch), NSOrderedAscending);
}

TEST_F(NSStringTest, NullComparesAsTheEmptyText)
{
    EXPECT_EQ(NSRef<NSString>("a")->compare(nullptr), NSOrderedDescending);
    EXPECT_EQ(NSString::string()->compare(nullptr), NSOrderedSame);
}

TEST_F(NSStringTest, FormatsObjectsAndNull)
{
    NSRef<NSString> name = "intro";
    NSRef<NSString> none;
    EXPECT_EQ(
        NSString::stringWithFormat("%@-%@-%@", name, none, NSNull::null())->utf8(), "intro-(null)-<null>");
    EXPECT_EQ(NSString::stringWithFormat("%@", NSRangeException)->utf8(), "NSRangeException");
}

TEST_F(NSStringTest, NullFormatIsANullString)
{
    EXPECT_FALSE(NSString::stringWithFormat(nullptr, 1));
}

TEST_F(NSStringTest, AnswersDynamicCalls)
{
    NSRef<NSString> text = "abc";
    EXPECT_EQ(NSSend<NSUInteger>(text, NSSelector("length")), 3U);
    EXPECT_EQ(NSSend<NSRef<NSString>>(text, NSSelector("substringFromIndex:"), 1)->utf8(), "bc");
    EXPECT_EQ(
        NSSend<NSComparisonResult>(text, NSSelector("compare:"), NSRef<NSString>("abd")), NSOrderedAscending);
}

TEST_F(NSStringTest, HasNoUnsignedReaders)
{
    NSRef<NSString> text = "1";
    EXPECT_FALSE(text->respondsToSelector(NSSelector("unsignedLongLongValue")));
    EXPECT_FALSE(text->respondsToSelector(NSSelector("unsignedLongValue")));
}

}
