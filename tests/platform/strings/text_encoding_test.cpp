#include "platform/strings/text_encoding.h"

#include "tests/vector_file.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;

std::string hexOf(std::string_view bytes)
{
    constexpr char kHex[] = "0123456789abcdef";
    std::string hex;
    for (char c : bytes) {
        auto byte = static_cast<unsigned char>(c);
        hex += { kHex[byte >> 4], kHex[byte & 15] };
    }
    return hex;
}

TEST(MacRomanTest, EncodesAsExpected)
{
    for (const vectors::Row& row : vectors::load("mac_roman.tsv")) {
        SCOPED_TRACE(row);
        std::optional<std::string> bytes = bytesFromUtf16(row.text("string_json"), ByteEncoding::MacRoman);
        std::string expected = row.cell("hex_or_null");
        EXPECT_EQ(bytes ? '"' + hexOf(*bytes) + '"' : "null", expected);
    }
}

TEST(MacRomanTest, EveryByteIsACharacterAndComesBack)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<char>(byte));
    auto text = utf16FromBytes(all, ByteEncoding::MacRoman);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->size(), 256U);
    EXPECT_EQ(bytesFromUtf16(*text, ByteEncoding::MacRoman), all);
}

TEST(MacRomanTest, HasTheEuroWhereTheCurrencySignWas)
{
    EXPECT_EQ(byteFromUnit(u'\u20ac', ByteEncoding::MacRoman), 0xDB);
    EXPECT_EQ(byteFromUnit(u'\u00a4', ByteEncoding::MacRoman), std::nullopt);
}

TEST(AsciiTest, RefusesWhatIsNotAscii)
{
    EXPECT_EQ(bytesFromUtf16(u"az~\u007f", ByteEncoding::Ascii), "az~\x7f");
    EXPECT_EQ(bytesFromUtf16(u"\u0080", ByteEncoding::Ascii), std::nullopt);
    EXPECT_EQ(utf16FromBytes("\x80", ByteEncoding::Ascii), std::nullopt);
}

TEST(UnknownBytesTest, AreUtf8OrElseMacRoman)
{
    EXPECT_EQ(utf16FromUnknownBytes("\xC3\xA9"), u"\u00e9");
    EXPECT_EQ(utf16FromUnknownBytes("\xA9nam"), u"\u00a9nam");
}

}
