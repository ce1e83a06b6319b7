#include "platform/strings/text_format.h"

#include "platform/strings/utf_conversion.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <rapidcheck/gtest.h>

namespace {

std::u16string noObjects(const NSObject&)
{
    return u"object";
}

template<typename... Arguments>
std::string formatted(std::u16string_view format, const Arguments&... arguments)
{
    const std::array<NSFormatArgument, sizeof...(Arguments)> list { NSFormatArgument(arguments)... };
    std::u16string text;
    platform::appendFormat(text, format, list, noObjects);
    return platform::utf8FromUtf16Replacing(text);
}

/// What C makes of it in the "C" locale, in which tests run.
template<typename Argument> std::string printed(const char* format, Argument argument)
{
    int length = std::snprintf(nullptr, 0, format, argument);
    std::string text(static_cast<std::size_t>(length), '\0');
    std::snprintf(text.data(), text.size() + 1, format, argument);
    return text;
}

TEST(FormatTest, CopiesWhatIsNoConversion)
{
    EXPECT_EQ(formatted(u""), "");
    EXPECT_EQ(formatted(u"100%% of caf\u00e9"), "100% of caf\u00e9");
}

TEST(FormatTest, WritesIntegersOfEveryWidth)
{
    EXPECT_EQ(formatted(u"%d %i %u", -1, 2, 3U), "-1 2 3");
    EXPECT_EQ(formatted(u"%ld %lu", LONG_MIN, ULONG_MAX), "-9223372036854775808 18446744073709551615");
    EXPECT_EQ(formatted(u"%lld %llu %zu", LLONG_MAX, 5ULL, std::size_t { 6 }), "9223372036854775807 5 6");
    EXPECT_EQ(formatted(u"%x %X %o", 255, 255, 8), "ff FF 10");
    EXPECT_EQ(formatted(u"%d %d %d", true, 'a', short { -3 }), "1 97 -3");
}

TEST(FormatTest, NegativeIntegersWrapInTheirOwnWidth)
{
    EXPECT_EQ(formatted(u"%u %x", -1, -1), "4294967295 ffffffff");
    EXPECT_EQ(formatted(u"%lu %lx", -1, -1), "18446744073709551615 ffffffffffffffff");
    EXPECT_EQ(formatted(u"%d", 4294967295U), "-1");
    EXPECT_EQ(formatted(u"%ld", 4294967295U), "4294967295");
    EXPECT_EQ(formatted(u"%lld", 18446744073709551615ULL), "-1");
}

TEST(FormatTest, WideIntegersAreNotCutByAPlainConversion)
{
    EXPECT_EQ(formatted(u"%d %u", 1LL << 40, 1ULL << 40), "1099511627776 1099511627776");
    EXPECT_EQ(formatted(u"%hd %hhu", 65537, 258), "1 2");
}

TEST(FormatTest, FlagsWidthAndPrecisionAreThoseOfC)
{
    EXPECT_EQ(formatted(u"[%5d|%-5d|%05d|%+d|% d]", 42, 42, 42, 42, 42), "[   42|42   |00042|+42| 42]");
    EXPECT_EQ(formatted(u"[%.4d|%6.4d|%-6.4d|%06.4d]", 42, 42, 42, 42), "[0042|  0042|0042  |  0042]");
    EXPECT_EQ(formatted(u"[%#x|%#X|%#o|%#x]", 255, 255, 8, 0), "[0xff|0XFF|010|0]");
    EXPECT_EQ(formatted(u"[%.0d|%5.0d|%#.0o]", 0, 0, 0), "[|     |0]");
}

TEST(FormatTest, StarsTakeWidthAndPrecision)
{
    EXPECT_EQ(formatted(u"[%*d|%-*d|%*d]", 4, 1, 4, 1, -4, 1), "[   1|1   |1   ]");
    EXPECT_EQ(formatted(u"[%.*f|%.*f]", 1, 2.55, -1, 2.5), "[2.5|2.500000]");
    EXPECT_EQ(formatted(u"[%*d]", LLONG_MIN, 1).size(), 65535U + 2);
}

TEST(FormatTest, WritesFloatingPointExactly)
{
    EXPECT_EQ(formatted(u"%f %.1f %.0f", 0.1, 0.25, 2.5), "0.100000 0.2 2");
    EXPECT_EQ(formatted(u"%e %E", 12345.678, 0.00012), "1.234568e+04 1.200000E-04");
    EXPECT_EQ(formatted(u"%g %g %g %G", 100000.0, 1000000.0, 0.0001, 1e-10), "100000 1e+06 0.0001 1E-10");
    EXPECT_EQ(
        formatted(u"%.17g %.17g %.17g", 0.1, 100.951, 1e21), "0.10000000000000001 100.95099999999999 1e+21");
    EXPECT_EQ(formatted(u"%0.7g %0.16g", 0.1f, 1.0 / 3), "0.1 0.3333333333333333");
    EXPECT_EQ(formatted(u"%.0f", 1e300).size(), 301U);
    EXPECT_EQ(formatted(u"%.1074f", DBL_TRUE_MIN), printed("%.1074f", DBL_TRUE_MIN));
}

TEST(FormatTest, WritesSignsInfinitiesAndNotANumber)
{
    double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(formatted(u"%f %g %.17g", -0.0, -0.0, -0.0), "-0.000000 -0 -0");
    EXPECT_EQ(formatted(u"%f %F %e %G", infinity, infinity, -infinity, -infinity), "inf INF -inf -INF");
    EXPECT_EQ(formatted(u"%f %+f %05f", std::nan(""), infinity, infinity), "nan +inf   inf");
}

TEST(FormatTest, WritesCharacters)
{
    EXPECT_EQ(formatted(u"%c%C%c", 'a', u'\u20ac', 66), "a\u20acB");
    EXPECT_EQ(formatted(u"[%3c|%-3c]", 'a', 'b'), "[  a|b  ]");
    EXPECT_EQ(formatted(u"%c", 0xA9), "\u00a9");
}

TEST(FormatTest, WritesTexts)
{
    EXPECT_EQ(formatted(u"%s %s %@", "caf\u00e9", std::string("b"), u"c"), "caf\u00e9 b c");
    EXPECT_EQ(formatted(u"[%5s|%-5s|%.2s]", "abc", "abc", "abc"), "[  abc|abc  |ab]");
    EXPECT_EQ(formatted(u"%@ %s", nullptr, static_cast<const char*>(nullptr)), "(null) (null)");
}

TEST(FormatTest, PrecisionKeepsFromReadingOn)
{
    const char fourBytes[] = { 'T', 'E', 'X', 'T' };
    EXPECT_EQ(formatted(u"%4.4s", static_cast<const char*>(fourBytes)), "TEXT");
    const char endsEarly[] = { 'a', 'b', '\0', 'c' };
    EXPECT_EQ(formatted(u"%4.4s", static_cast<const char*>(endsEarly)), "  ab");
}

TEST(FormatTest, BytesThatAreNotUtf8AreMacRoman)
{
    EXPECT_EQ(formatted(u"%s", "\xA9nam"), "\u00a9nam");
}

TEST(FormatTest, PrecisionOfATextKeepsPairsTogether)
{
    EXPECT_EQ(formatted(u"%.2@|%.3@", u"a\U0001F600", u"a\U0001F600"), "a|a\U0001F600");
}

TEST(FormatTest, WritesPointers)
{
    EXPECT_EQ(formatted(u"%p", reinterpret_cast<const void*>(0x1F)), "0x1f");
    EXPECT_EQ(formatted(u"%p|%6p", nullptr, nullptr), "0x0|   0x0");
}

TEST(FormatTest, ConversionWithoutArgumentStaysAsItIs)
{
    EXPECT_EQ(formatted(u"%d and %5.2f"), "%d and %5.2f");
    EXPECT_EQ(formatted(u"%d %d", 1), "1 %d");
}

TEST(FormatTest, UnknownConversionStaysAsItIs)
{
    EXPECT_EQ(formatted(u"%y %n", 1), "%y %n");
    EXPECT_EQ(formatted(u"50%"), "50%");
    EXPECT_EQ(formatted(u"50%-0"), "50%-0");
    EXPECT_EQ(formatted(u"50%ll"), "50%ll");
}

TEST(FormatTest, NumbersConvertIntoEachOther)
{
    EXPECT_EQ(formatted(u"%d %d", 1.9, -1.9), "1 -1");
    EXPECT_EQ(formatted(u"%lld %lld %lld", 1e300, -1e300, std::nan("")),
        "9223372036854775807 -9223372036854775808 0");
    EXPECT_EQ(formatted(u"%.1f %.1f %.0f", 3, -3, 18446744073709551615ULL), "3.0 -3.0 18446744073709551616");
    EXPECT_EQ(formatted(u"%@ %@ %@", 3, 0.5, true), "3 0.5 1");
}

TEST(FormatTest, TextIsNoNumber)
{
    EXPECT_EQ(formatted(u"%d|%f|%c|%s", "1", u"2", 3.0, 4), "%d|%f|%c|4");
}

TEST(FormatTest, UnusedArgumentsAreLeftOut)
{
    EXPECT_EQ(formatted(u"%d", 1, 2, 3), "1");
}

std::string numberFormat(std::u16string_view length, char conversion)
{
    std::string format = "%";
    for (char flag : std::string("-+ 0#"))
        if (*rc::gen::inRange(0, 3) == 0 && (flag != '#' || std::strchr("xXo", conversion)))
            format += flag;
    if (*rc::gen::arbitrary<bool>())
        format += std::to_string(*rc::gen::inRange(0, 40));
    if (*rc::gen::arbitrary<bool>())
        format += "." + std::to_string(*rc::gen::inRange(0, 40));
    return format + std::string(length.begin(), length.end()) + conversion;
}

RC_GTEST_PROP(FormatLaw, IntegersAreThoseOfC, (long long value))
{
    std::string format = numberFormat(u"ll", *rc::gen::elementOf(std::string("diuxXo")));
    RC_ASSERT(
        formatted(std::u16string(format.begin(), format.end()), value) == printed(format.c_str(), value));
}

RC_GTEST_PROP(FormatLaw, FloatingPointIsThatOfC, (std::uint64_t bits))
{
    double value;
    std::memcpy(&value, &bits, sizeof value);
    if (*rc::gen::arbitrary<bool>())
        value = *rc::gen::arbitrary<int>() / 8.0;
    std::string format = numberFormat(u"", *rc::gen::elementOf(std::string("feEgG")));
    RC_ASSERT(
        formatted(std::u16string(format.begin(), format.end()), value) == printed(format.c_str(), value));
}

}
