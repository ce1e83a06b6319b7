#include "platform/strings/utf_conversion.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using namespace platform;
using namespace std::literals;

TEST(Utf8Test, DecodesEveryLengthOfSequence)
{
    EXPECT_EQ(utf16FromUtf8("a\u00e9\u20ac\U0001F600"), u"a\u00e9\u20ac\U0001F600");
}

TEST(Utf8Test, DecodesTheEndsOfEveryRange)
{
    EXPECT_EQ(utf16FromUtf8("\0\x7F"sv), u"\0\u007f"sv);
    EXPECT_EQ(utf16FromUtf8("\xC2\x80\xDF\xBF"), u"\u0080\u07ff");
    EXPECT_EQ(utf16FromUtf8("\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"), u"\u0800\ud7ff\ue000\uffff");
    EXPECT_EQ(utf16FromUtf8("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), u"\U00010000\U0010ffff");
}

TEST(Utf8Test, RefusesOverlongForms)
{
    EXPECT_EQ(utf16FromUtf8("\xC0\x80"), std::nullopt);
    EXPECT_EQ(utf16FromUtf8("\xC1\xBF"), std::nullopt);
    EXPECT_EQ(utf16FromUtf8("\xE0\x9F\xBF"), std::nullopt);
    EXPECT_EQ(utf16FromUtf8("\xF0\x8F\xBF\xBF"), std::nullopt);
}

TEST(Utf8Test, RefusesSurrogatesAndCodePointsBeyondTheLast)
{
    EXPECT_EQ(utf16FromUtf8("\xED\xA0\x80"), std::nullopt);
    EXPECT_EQ(utf16FromUtf8("\xF4\x90\x80\x80"), std::nullopt);
    EXPECT_EQ(utf16FromUtf8("\xF5\x80\x80\x80"), std::nullopt);
}

TEST(Utf8Test, RefusesSequencesThatAreCutShort)
{
    EXPECT_EQ(utf16FromUtf8("a\xC3"), std::nullopt);
    EXPECT_EQ(utf16FromUtf8("\xE2\x82"), std::nullopt);
    EXPECT_EQ(utf16FromUtf8("\xF0\x9F\x98"), std::nullopt);
    EXPECT_EQ(utf16FromUtf8("\xC3("), std::nullopt);
    EXPECT_EQ(utf16FromUtf8("\x80"), std::nullopt);
}

TEST(Utf8Test, KeepsAByteOrderMark)
{
    EXPECT_EQ(utf16FromUtf8("\xEF\xBB\xBF"
                            "a"),
        u"\ufeff"
        u"a");
}

TEST(Utf8Test, FindsAnIllFormedByteBehindALongAsciiText)
{
    std::string text(100, 'a');
    EXPECT_TRUE(utf16FromUtf8(text));
    text[97] = '\xFF';
    EXPECT_EQ(utf16FromUtf8(text), std::nullopt);
}

TEST(Utf16Test, RefusesLoneSurrogates)
{
    const char16_t lead[] = { u'a', 0xD800 };
    const char16_t trail[] = { 0xDC00, u'a' };
    const char16_t swapped[] = { 0xDC00, 0xD800 };
    EXPECT_EQ(utf8FromUtf16({ lead, 2 }), std::nullopt);
    EXPECT_EQ(utf8FromUtf16({ trail, 2 }), std::nullopt);
    EXPECT_EQ(utf8FromUtf16({ swapped, 2 }), std::nullopt);
    EXPECT_EQ(utf8FromUtf16Replacing({ swapped, 2 }), "\uFFFD\uFFFD");
}

TEST(Utf16Test, EncodesEveryLengthOfSequence)
{
    EXPECT_EQ(utf8FromUtf16(u"a\u00e9\u20ac\U0001F600"), "a\u00e9\u20ac\U0001F600");
}

RC_GTEST_PROP(UtfLaw, WellFormedTextComesBack, (const std::vector<std::uint32_t>& points))
{
    std::u16string text;
    for (std::uint32_t raw : points) {
        std::uint32_t point = raw % 0x110000;
        if (point < 0x10000) {
            if (point < 0xD800 || point > 0xDFFF)
                text.push_back(static_cast<char16_t>(point));
        } else {
            text.push_back(static_cast<char16_t>(0xD7C0 + (point >> 10)));
            text.push_back(static_cast<char16_t>(0xDC00 + (point & 0x3FF)));
        }
    }
    auto bytes = utf8FromUtf16(text);
    RC_ASSERT(bytes.has_value());
    RC_ASSERT((utf16FromUtf8(*bytes) == text));
    RC_ASSERT((utf16LengthOfWellFormed(*bytes) == text.size()));
}

RC_GTEST_PROP(UtfLaw, ReplacedTextIsWellFormed, (const std::vector<std::uint16_t>& raw))
{
    const std::u16string units(raw.begin(), raw.end());
    const std::string bytes = utf8FromUtf16Replacing(units);
    RC_ASSERT(utf16FromUtf8(bytes).has_value());
    RC_ASSERT(utf8FromUtf16(units).has_value() == (utf16FromUtf8(bytes) == units));
}

}
