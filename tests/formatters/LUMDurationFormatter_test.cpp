#include "LUMFoundation/LUMDurationFormatter.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"

#include <limits>

namespace {

using Options = void (*)(LUMDurationFormatter&);

void none(LUMDurationFormatter&) { }
void oneZero(LUMDurationFormatter& formatter)
{
    formatter.setAllowsOneZero(true);
}
void hours(LUMDurationFormatter& formatter)
{
    formatter.setAlwaysShowHours(true);
}
void minutes(LUMDurationFormatter& formatter)
{
    formatter.setAlwaysShowMinutes(true);
}
void hundredths(LUMDurationFormatter& formatter)
{
    formatter.setIncludeMilliseconds(true);
}
void label(LUMDurationFormatter& formatter)
{
    formatter.setShowsLastUnitLabel(true);
}
void noZero(LUMDurationFormatter& formatter)
{
    formatter.setDisplaysZero(false);
}
void labelAndHundredths(LUMDurationFormatter& formatter)
{
    label(formatter);
    hundredths(formatter);
}
void pointAndHundredths(LUMDurationFormatter& formatter)
{
    formatter.setSeparator(".");
    hundredths(formatter);
}
void nullSeparator(LUMDurationFormatter& formatter)
{
    formatter.setSeparator(nullptr);
}

struct Case {
    const char* name;
    Options options;
    double seconds;
    const char* text; // null for no text
};

class LUMDurationFormatterCases : public ObjectTest, public testing::WithParamInterface<Case> { };

TEST_P(LUMDurationFormatterCases, Shows)
{
    auto formatter = NSMake<LUMDurationFormatter>();
    GetParam().options(*formatter);
    auto text = formatter->stringForObjectValue(NSNumber::numberWithDouble(GetParam().seconds));
    EXPECT_EQ(text ? text->utf8() : "null", GetParam().text ? GetParam().text : "null");
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(Plain, LUMDurationFormatterCases,
    testing::Values(Case { "LessThanHalfASecondDown", none, 65.4, "01:05" },
        Case { "FortyNineHundredthsDown", none, 65.49, "01:05" },
        Case { "HalfASecondUp", none, 65.5, "01:06" }, Case { "Seconds", none, 5, "00:05" },
        Case { "NineSeconds", none, 9, "00:09" }, Case { "TenSeconds", none, 10, "00:10" },
        Case { "NineMinutes", none, 549, "09:09" }, Case { "TenMinutes", none, 610, "10:10" },
        Case { "Zero", none, 0, "00:00" }, Case { "Hours", none, 3725, "1:02:05" },
        Case { "OneHour", none, 3600, "1:00:00" }, Case { "TenHours", none, 36000, "10:00:00" },
        Case { "Negative", none, -65, "-01:05" },
        Case { "DeliberatelyRoundsNegativesByMagnitude", none, -65.5, "-01:06" },
        Case { "NegativeZero", none, -0.0, "00:00" }, Case { "NegativeRoundedToZero", none, -0.3, "-00:00" },
        Case { "DeliberatelyTestsForHoursBeforeRounding", none, 3599.5, "00:00" },
        Case { "MinutesCarried", none, 59.5, "01:00" }, Case { "HoursCarried", none, 7199.5, "2:00:00" }),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(Options, LUMDurationFormatterCases,
    testing::Values(Case { "OneZero", oneZero, 65, "1:05" }, Case { "OneZeroAtZero", oneZero, 0, "0:00" },
        Case { "OneZeroWithHours", oneZero, 3725, "1:02:05" },
        Case { "OneZeroWithUnseenHours", oneZero, 3599.5, "00:00" }, Case { "Hours", hours, 65, "0:01:05" },
        Case { "HoursCarriedAndShown", hours, 3599.5, "1:00:00" },
        Case { "DeliberatelyIgnoresAlwaysShowMinutes", minutes, 5, "00:05" },
        Case { "DeliberatelyHundredthsForMilliseconds", hundredths, 65.25, "01:05.25" },
        Case { "HundredthsLeadingZero", hundredths, 65.05, "01:05.05" },
        Case { "NineHundredths", hundredths, 0.09, "00:00.09" },
        Case { "TenHundredths", hundredths, 0.1, "00:00.10" },
        Case { "HalfAHundredthUp", hundredths, 65.125, "01:05.13" },
        Case { "HundredthsCarried", hundredths, 65.996, "01:06.00" },
        Case { "HundredthsOfMuch", hundredths, 16777216.4, "4660:20:16.00" }, // a float has no more
        Case { "Label", label, 65, "01:05s" },
        Case { "DeliberatelyNoLabelBehindHundredths", labelAndHundredths, 65.25, "01:05.25" },
        Case { "Separator", pointAndHundredths, 65.25, "01.05.25" },
        Case { "NullSeparator", nullSeparator, 65, "01(null)05" }, Case { "NoZero", noZero, 0, nullptr },
        Case { "NoZeroButNearlyZero", noZero, 0.3, "00:00" },
        Case { "NoZeroNegative", noZero, -0.0, nullptr }),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(Limits, LUMDurationFormatterCases,
    testing::Values(Case { "LargestFloatBelow", none, 4294967040.0, "1193046:24:00" },
        Case { "TwoToThe32", none, 4294967296.0, "1193046:28:15" },
        Case { "Huge", hundredths, 1e30, "1193046:28:15.00" },
        Case { "Infinity", none, kInfinity, "1193046:28:15" },
        Case { "NegativeInfinity", none, -kInfinity, "-1193046:28:15" },
        Case { "NotANumber", none, std::numeric_limits<double>::quiet_NaN(), "00:00" },
        Case { "NotANumberIsNotZero", noZero, std::numeric_limits<double>::quiet_NaN(), "00:00" }),
    [](const auto& test) { return test.param.name; });

/// Counts how often it is asked for its number.
class Asked : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = { NSMethodOf<"floatValue", &Asked::floatValue>() };
        static const NSClass& type = NSClass::define("Asked", &NSObject::classObject(), kMethods);
        return type;
    }
    float floatValue()
    {
        ++times;
        return 61;
    }
    int times = 0;
};

struct LUMDurationFormatterTest : ObjectTest {
    NSRef<LUMDurationFormatter> formatter = NSMake<LUMDurationFormatter>();
    std::string show(const NSId& value) const { return formatter->stringForObjectValue(value)->utf8(); }
};

TEST_F(LUMDurationFormatterTest, HasTheseOptionsAtFirst)
{
    EXPECT_FALSE(formatter->allowsOneZero());
    EXPECT_FALSE(formatter->alwaysShowHours());
    EXPECT_FALSE(formatter->alwaysShowMinutes());
    EXPECT_FALSE(formatter->includeMilliseconds());
    EXPECT_TRUE(formatter->displaysZero());
    EXPECT_FALSE(formatter->showsLastUnitLabel());
    EXPECT_EQ(formatter->separator()->utf8(), ":");
}

TEST_F(LUMDurationFormatterTest, TakesAnyObjectWithAFloatValue)
{
    EXPECT_EQ(show(NSRef<NSString>("65.5")), "01:06");
    EXPECT_EQ(show(NSMake<Asked>()), "01:01");
}

TEST_F(LUMDurationFormatterTest, CountsAnObjectWithoutAFloatValueAsZero)
{
    EXPECT_EQ(show(nullptr), "00:00");
    EXPECT_EQ(show(NSMake<NSObject>()), "00:00");
    formatter->setDisplaysZero(false);
    EXPECT_FALSE(formatter->stringForObjectValue(nullptr));
}

TEST_F(LUMDurationFormatterTest, DeliberatelyAsksTheValueAnewForEachTest)
{
    auto asked = NSMake<Asked>();
    (void)show(asked);
    EXPECT_EQ(asked->times, 2);
    formatter->setDisplaysZero(false);
    (void)show(asked);
    EXPECT_EQ(asked->times, 6);
}

TEST_F(LUMDurationFormatterTest, KeepsACopyOfItsSeparator)
{
    NSRef<NSMutableString> separator = NSMutableString::stringWithString("h");
    formatter->setSeparator(separator);
    separator->appendString("x");
    EXPECT_EQ(show(NSNumber::numberWithInt(65)), "01h05");
}

/// Has options of its own, whatever is set.
class Own : public LUMDurationFormatter {
public:
    bool allowsOneZero() const override { return true; }
    bool displaysZero() const override { return false; }
    bool alwaysShowHours() const override { return hours; }
    bool includeMilliseconds() const override { return hundredths; }
    bool showsLastUnitLabel() const override { return true; }
    NSRef<NSString> separator() const override { return "-"; }

    bool hours = false;
    bool hundredths = false;
};

TEST_F(LUMDurationFormatterTest, AsksItsOverridesForEachOption)
{
    auto own = NSMake<Own>();
    auto five = NSNumber::numberWithInt(5);
    EXPECT_EQ(own->stringForObjectValue(five)->utf8(), "0-05s");
    EXPECT_FALSE(own->stringForObjectValue(NSNumber::numberWithInt(0)));
    own->hours = true;
    EXPECT_EQ(own->stringForObjectValue(five)->utf8(), "0-0-05s");
    own->hundredths = true;
    EXPECT_EQ(own->stringForObjectValue(five)->utf8(), "0-0-05.00");
}

TEST_F(LUMDurationFormatterTest, TellsEachOptionAsItWasSet)
{
    for (bool value : { true, false }) {
        formatter->setAllowsOneZero(value);
        EXPECT_EQ(formatter->allowsOneZero(), value);
        formatter->setAlwaysShowHours(value);
        EXPECT_EQ(formatter->alwaysShowHours(), value);
        formatter->setAlwaysShowMinutes(value);
        EXPECT_EQ(formatter->alwaysShowMinutes(), value);
        formatter->setIncludeMilliseconds(value);
        EXPECT_EQ(formatter->includeMilliseconds(), value);
        formatter->setDisplaysZero(value);
        EXPECT_EQ(formatter->displaysZero(), value);
        formatter->setShowsLastUnitLabel(value);
        EXPECT_EQ(formatter->showsLastUnitLabel(), value);
    }
    formatter->setSeparator("-");
    EXPECT_EQ(formatter->separator()->utf8(), "-");
}

TEST_F(LUMDurationFormatterTest, ReadsNothing)
{
    NSId value = formatter;
    EXPECT_FALSE(formatter->getObjectValue(&value, "01:05"));
    EXPECT_FALSE(formatter->getObjectValue(nullptr, nullptr));
    EXPECT_EQ(value, formatter);
}

TEST_F(LUMDurationFormatterTest, AnswersDynamicCalls)
{
    NSSend(formatter, NSSelector("setAllowsOneZero:"), true);
    auto text =
        NSSend<NSRef<NSString>>(formatter, NSSelector("stringForObjectValue:"), NSNumber::numberWithInt(65));
    EXPECT_EQ(text->utf8(), "1:05");
}

}
