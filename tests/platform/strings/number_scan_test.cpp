#include "platform/strings/number_scan.h"

#include "LUMPlatform/NSString.h"
#include "tests/vector_file.h"

#include <charconv>
#include <climits>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using namespace platform;
using namespace std::literals;

/// What "%.17g" gives.
std::string exactText(double value)
{
    char text[64];
    return { text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, 17).ptr };
}

class ScanDoubleVectors : public testing::TestWithParam<vectors::Row> { };

TEST_P(ScanDoubleVectors, ScanAsExpected)
{
    std::string skip = GetParam().cell("skip");
    CharacterSet skipped = skip == "space" ? CharacterSet::withCharacters(u" ")
        : skip == "default"                ? CharacterSet::whitespaceAndNewline()
                                           : CharacterSet();
    std::u16string text = GetParam().text("string_json");
    std::size_t location = 0;
    vectors::Json expected = GetParam().json("result_json");
    for (const vectors::Json& step : expected.items) {
        auto scanned = scanDouble(text, skipCharacters(text, location, skipped));
        std::string value = scanned ? exactText(scanned->value) : "F";
        location = scanned ? scanned->end : location;
        EXPECT_EQ(std::u16string(value.begin(), value.end()), step.items[0].text);
        EXPECT_EQ(static_cast<double>(location), step.items[1].number);
    }
}

INSTANTIATE_TEST_SUITE_P(ScanDouble, ScanDoubleVectors, testing::ValuesIn(vectors::load("scan_double.tsv")),
    [](const auto& row) { return row.param.name(); });

class NumberVectors : public testing::TestWithParam<vectors::Row> { };

TEST_P(NumberVectors, ReadAsExpected)
{
    const vectors::Row& row = GetParam();
    std::u16string text = row.text("string_json");
    EXPECT_EQ(boolValue(text), row.number("boolValue") == 1);
    EXPECT_EQ(std::to_string(intValue(text)), row.cell("intValue"));
    EXPECT_EQ(std::to_string(longLongValue(text)), row.cell("longLongValue"));
    EXPECT_EQ(exactText(doubleValue(text)), row.cell("doubleValue"));
}

TEST_P(NumberVectors, ReadAsExpectedFromAString)
{
    const vectors::Row& row = GetParam();
    const auto string = NSString::stringWithCharacters(row.text("string_json"));
    EXPECT_EQ(string->boolValue(), row.number("boolValue") == 1);
    EXPECT_EQ(std::to_string(string->intValue()), row.cell("intValue"));
    EXPECT_EQ(std::to_string(string->integerValue()), row.cell("integerValue"));
    EXPECT_EQ(std::to_string(string->longLongValue()), row.cell("longLongValue"));
    EXPECT_EQ(exactText(string->doubleValue()), row.cell("doubleValue"));
    EXPECT_EQ(exactText(static_cast<double>(string->floatValue())), row.cell("floatValue"));
}

INSTANTIATE_TEST_SUITE_P(NumberConversions, NumberVectors,
    testing::ValuesIn(vectors::load("number_conversions.tsv")),
    [](const auto& row) { return row.param.name(); });

TEST(ScanDoubleTest, StopsBeforeAnExponentWithoutDigits)
{
    for (auto text : { u"1e"sv, u"1e+"sv, u"1E-"sv, u"1ex"sv }) {
        auto scanned = scanDouble(text, 0);
        ASSERT_TRUE(scanned);
        EXPECT_EQ(scanned->value, 1.0);
        EXPECT_EQ(scanned->end, 1U);
    }
}

TEST(ScanDoubleTest, SpaceBehindASignEndsANumberButNotATruthValue)
{
    EXPECT_FALSE(scanDouble(u"- 1", 0));
    EXPECT_EQ(doubleValue(u"- 1"), 0.0);
    EXPECT_EQ(intValue(u"- 1"), 0);
    EXPECT_TRUE(boolValue(u"- 1"));
}

TEST(ScanDoubleTest, StartBeyondTheEndFindsNothing)
{
    EXPECT_FALSE(scanDouble(u"1", 1));
    EXPECT_FALSE(scanDouble(u"1", 7));
}

TEST(ScanDoubleTest, TooLargeIsInfiniteAndTooSmallIsZero)
{
    EXPECT_EQ(scanDouble(u"1e309", 0)->value, HUGE_VAL);
    EXPECT_EQ(scanDouble(u"-1e309", 0)->value, -HUGE_VAL);
    EXPECT_EQ(scanDouble(u"1e-400", 0)->value, 0.0);
    EXPECT_TRUE(std::signbit(scanDouble(u"-1e-400", 0)->value));
    EXPECT_EQ(scanDouble(u"1e99999999999999999999", 0)->value, HUGE_VAL);
    EXPECT_EQ(scanDouble(u"1e-99999999999999999999", 0)->value, 0.0);
    EXPECT_EQ(scanDouble(u"0e99999999999999999999", 0)->value, 0.0);
}

TEST(ScanDoubleTest, ManyDigitsOutweighTheExponent)
{
    std::u16string huge(400, u'9');
    EXPECT_EQ(doubleValue(huge), HUGE_VAL);
    EXPECT_EQ(doubleValue(huge + u"e-400"), 1.0);
    std::u16string tiny = u"0." + std::u16string(400, u'0') + u"1";
    EXPECT_EQ(doubleValue(tiny), 0.0);
    EXPECT_EQ(doubleValue(tiny + u"e401"), 1.0);
}

TEST(IntegerTest, SaturatesAtTheLimits)
{
    EXPECT_EQ(longLongValue(u"9223372036854775807"), LLONG_MAX);
    EXPECT_EQ(longLongValue(u"9223372036854775808"), LLONG_MAX);
    EXPECT_EQ(longLongValue(u"-9223372036854775808"), LLONG_MIN);
    EXPECT_EQ(longLongValue(u"-99999999999999999999"), LLONG_MIN);
    EXPECT_EQ(intValue(u"-2147483649"), INT_MIN);
}

TEST(IntegerTest, SkipsNewlinesToo)
{
    EXPECT_EQ(intValue(u"\n12"), 12);
    EXPECT_EQ(doubleValue(u"\n12"), 12.0);
    EXPECT_TRUE(boolValue(u"\u00a0YES"));
}

RC_GTEST_PROP(ScanLaw, EveryFiniteDoubleComesBack, (std::uint64_t bits))
{
    double value;
    static_assert(sizeof value == sizeof bits);
    std::memcpy(&value, &bits, sizeof value);
    RC_PRE(std::isfinite(value));
    std::string text = exactText(value);
    auto scanned = scanDouble(std::u16string(text.begin(), text.end()), 0);
    RC_ASSERT(scanned.has_value());
    RC_ASSERT(scanned->value == value);
    RC_ASSERT(scanned->end == text.size());
}

RC_GTEST_PROP(ScanLaw, EveryIntegerComesBack, (long long value))
{
    std::string text = std::to_string(value);
    RC_ASSERT(longLongValue(std::u16string(text.begin(), text.end())) == value);
}

}
