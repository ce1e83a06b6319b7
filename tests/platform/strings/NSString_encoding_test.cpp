#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/vector_file.h"

#include <cstdio>
#include <cstring>

namespace {

class NSStringEncodingTest : public ObjectTest { };

TEST_F(NSStringEncodingTest, KnowsWhatAnEncodingHolds)
{
    NSRef<NSString> text = "caf\u00e9";
    EXPECT_TRUE(text->canBeConvertedToEncoding(NSUTF8StringEncoding));
    EXPECT_TRUE(text->canBeConvertedToEncoding(NSMacOSRomanStringEncoding));
    EXPECT_FALSE(text->canBeConvertedToEncoding(NSASCIIStringEncoding));
    EXPECT_FALSE(NSRef<NSString>("e\u0301")->canBeConvertedToEncoding(NSMacOSRomanStringEncoding));
    EXPECT_FALSE(text->canBeConvertedToEncoding(static_cast<NSStringEncoding>(999)));
    const char16_t lone[] = { 0xD800 };
    EXPECT_FALSE(NSString::stringWithCharacters({ lone, 1 })->canBeConvertedToEncoding(NSUTF8StringEncoding));
}

TEST_F(NSStringEncodingTest, BecomesBytesAndComesBack)
{
    NSRef<NSString> text = "caf\u00e9";
    for (auto encoding : { NSUTF8StringEncoding, NSMacOSRomanStringEncoding }) {
        auto data = text->dataUsingEncoding(encoding);
        EXPECT_EQ(data->length(), encoding == NSUTF8StringEncoding ? 5U : 4U);
        EXPECT_TRUE(NSString::initWithData(data, encoding)->isEqual(text));
    }
    EXPECT_FALSE(text->dataUsingEncoding(NSASCIIStringEncoding));
    EXPECT_EQ(NSString::string()->dataUsingEncoding(NSASCIIStringEncoding)->length(), 0U);
}

TEST_F(NSStringEncodingTest, BytesThatAreNoTextMakeNone)
{
    auto bytes = NSData::dataWithBytes("a\xFF", 2);
    EXPECT_FALSE(NSString::initWithData(bytes, NSUTF8StringEncoding));
    EXPECT_FALSE(NSString::initWithData(bytes, NSASCIIStringEncoding));
    EXPECT_EQ(NSString::initWithData(bytes, NSMacOSRomanStringEncoding)->characters(), u"a\u02c7");
    EXPECT_FALSE(NSString::initWithData(bytes, static_cast<NSStringEncoding>(999)));
    EXPECT_FALSE(NSString::initWithData(nullptr, NSUTF8StringEncoding));
    EXPECT_EQ(NSString::initWithData(NSData::data(), NSUTF8StringEncoding)->utf8(), "");
}

/// "ok" or "no", and the buffer up to its terminator, of which every byte behind is as it was.
std::string storedBy(const NSRef<NSString>& text, NSUInteger maxLength, NSStringEncoding encoding)
{
    char buffer[16];
    std::memset(buffer, '#', sizeof buffer);
    std::string result = text->getCString(buffer, maxLength, encoding) ? "ok " : "no ";
    result += std::string_view(buffer, strnlen(buffer, sizeof buffer));
    for (std::size_t i = maxLength; i < sizeof buffer; ++i)
        EXPECT_EQ(buffer[i], '#');
    return result;
}

TEST_F(NSStringEncodingTest, StoresACStringThatFits)
{
    EXPECT_EQ(storedBy("abcdefgh", 9, NSMacOSRomanStringEncoding), "ok abcdefgh");
    EXPECT_EQ(storedBy("CREATYP", 8, NSUTF8StringEncoding), "ok CREATYP");
    EXPECT_EQ(storedBy("CREA", 8, NSUTF8StringEncoding), "ok CREA");
    EXPECT_EQ(storedBy("\u00e9", 8, NSMacOSRomanStringEncoding), "ok \x8E");
    EXPECT_EQ(storedBy("", 1, NSUTF8StringEncoding), "ok ");
}

TEST_F(NSStringEncodingTest, StoresTheStartOfACStringThatDoesNotFit)
{
    EXPECT_EQ(storedBy("abcdefghi", 9, NSMacOSRomanStringEncoding), "no abcdefgh");
    EXPECT_EQ(storedBy("ab\u0416cd", 9, NSMacOSRomanStringEncoding), "no ab");
    EXPECT_EQ(storedBy("ab\u20ac", 5, NSUTF8StringEncoding), "no ab");
    EXPECT_EQ(storedBy("a", 1, NSUTF8StringEncoding), "no ");
}

class GetCStringVectors : public ObjectTest, public testing::WithParamInterface<vectors::Row> { };

TEST_P(GetCStringVectors, StoreAsExpected)
{
    char text[32];
    unsigned long maxLength = 0;
    unsigned long encoding = 0;
    ASSERT_EQ(std::sscanf(GetParam().cell("call").c_str(), "getCString '%31[^']' max=%lu enc=%lu", text,
                  &maxLength, &encoding),
        3);
    unsigned char buffer[12];
    std::memset(buffer, 0xEE, sizeof buffer);
    const bool fits = NSString::stringWithUTF8String(text)->getCString(
        reinterpret_cast<char*>(buffer), maxLength, static_cast<NSStringEncoding>(encoding));
    std::string result = fits ? "ok=1 " : "ok=0 ";
    for (unsigned char byte : buffer)
        result += { "0123456789abcdef"[byte / 16], "0123456789abcdef"[byte % 16] };
    EXPECT_EQ(result, GetParam().cell("result"));
}

INSTANTIATE_TEST_SUITE_P(GetCString, GetCStringVectors, testing::ValuesIn(vectors::load("getcstring.tsv")),
    [](const auto& row) { return row.param.name(); });

TEST_F(NSStringEncodingTest, StoresNothingWithoutABuffer)
{
    EXPECT_FALSE(NSString::string()->getCString(nullptr, 10, NSUTF8StringEncoding));
    char untouched = '#';
    EXPECT_FALSE(NSString::string()->getCString(&untouched, 0, NSUTF8StringEncoding));
    EXPECT_EQ(untouched, '#');
}

}
