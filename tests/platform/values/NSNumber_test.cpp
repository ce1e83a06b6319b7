#include "LUMPlatform/NSNumber.h"

#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"

#include <limits>

namespace {

constexpr auto kInf = std::numeric_limits<double>::infinity();
constexpr auto kNaN = std::numeric_limits<double>::quiet_NaN();

struct NSNumberTest : ObjectTest { };

TEST_F(NSNumberTest, KeepsTheTypeItWasMadeWith)
{
    EXPECT_STREQ(NSNumber::numberWithBool(true)->objCType(), "c");
    EXPECT_STREQ(NSNumber::numberWithChar(1)->objCType(), "c");
    EXPECT_STREQ(NSNumber::numberWithShort(1)->objCType(), "s");
    EXPECT_STREQ(NSNumber::numberWithInt(1)->objCType(), "i");
    EXPECT_STREQ(NSNumber::numberWithLong(1)->objCType(), "q");
    EXPECT_STREQ(NSNumber::numberWithLongLong(1)->objCType(), "q");
    EXPECT_STREQ(NSNumber::numberWithInteger(1)->objCType(), "q");
    EXPECT_STREQ(NSNumber::numberWithFloat(1)->objCType(), "f");
    EXPECT_STREQ(NSNumber::numberWithDouble(1)->objCType(), "d");
}

TEST_F(NSNumberTest, KeepsUnsignedValuesInTheNextWiderSignedType)
{
    EXPECT_STREQ(NSNumber::numberWithUnsignedChar(200)->objCType(), "s");
    EXPECT_STREQ(NSNumber::numberWithUnsignedShort(1)->objCType(), "i");
    EXPECT_STREQ(NSNumber::numberWithUnsignedInt(1)->objCType(), "q");
    EXPECT_STREQ(NSNumber::numberWithUnsignedLong(1)->objCType(), "q");
    EXPECT_STREQ(NSNumber::numberWithUnsignedInteger(1)->objCType(), "q");
    EXPECT_STREQ(NSNumber::numberWithUnsignedLongLong(0x7fff'ffff'ffff'ffff)->objCType(), "q");
    EXPECT_STREQ(NSNumber::numberWithUnsignedLongLong(0x8000'0000'0000'0000)->objCType(), "Q");
}

TEST_F(NSNumberTest, HasTwoSharedTruthValues)
{
    EXPECT_TRUE(NSNumber::numberWithBool(true) == NSNumber::numberWithBool(true));
    EXPECT_TRUE(NSNumber::numberWithBool(false) == NSNumber::numberWithBool(false));
    EXPECT_TRUE(NSNumber::numberWithBool(true)->isBool());
    EXPECT_FALSE(NSNumber::numberWithChar(1)->isBool());
}

TEST_F(NSNumberTest, GivesATruthValueAsEveryType)
{
    auto number = NSNumber::numberWithBool(true);
    EXPECT_TRUE(number->boolValue());
    EXPECT_EQ(number->intValue(), 1);
    EXPECT_EQ(number->unsignedLongLongValue(), 1u);
    EXPECT_EQ(number->doubleValue(), 1.0);
    EXPECT_EQ(number->floatValue(), 1.0f);
}

TEST_F(NSNumberTest, IsTrueUnlessZero)
{
    EXPECT_TRUE(NSNumber::numberWithDouble(0.5)->boolValue());
    EXPECT_TRUE(NSNumber::numberWithInt(256)->boolValue());
    EXPECT_TRUE(NSNumber::numberWithDouble(kNaN)->boolValue());
    EXPECT_FALSE(NSNumber::numberWithInt(0)->boolValue());
    EXPECT_FALSE(NSNumber::numberWithDouble(-0.0)->boolValue());
}

TEST_F(NSNumberTest, WrapsIntegersToNarrowerAndUnsignedTypes)
{
    auto largest = NSNumber::numberWithUnsignedLongLong(std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(largest->longLongValue(), -1);
    EXPECT_EQ(largest->intValue(), -1);
    EXPECT_EQ(largest->unsignedLongLongValue(), 18446744073709551615u);
    EXPECT_EQ(NSNumber::numberWithInt(-5)->unsignedLongLongValue(), 18446744073709551611u);
    EXPECT_EQ(NSNumber::numberWithInt(300)->charValue(), 44);
    EXPECT_EQ(NSNumber::numberWithInt(300)->unsignedCharValue(), 44);
    EXPECT_EQ(NSNumber::numberWithInt(-1)->unsignedShortValue(), 65535);
    EXPECT_EQ(NSNumber::numberWithInt(40000)->shortValue(), -25536);
    EXPECT_EQ(NSNumber::numberWithLongLong(1LL << 32)->unsignedIntValue(), 0u);
}

TEST_F(NSNumberTest, TruncatesFractionsTowardZero)
{
    EXPECT_EQ(NSNumber::numberWithDouble(-1.9)->intValue(), -1);
    EXPECT_EQ(NSNumber::numberWithDouble(-1.9)->longLongValue(), -1);
    EXPECT_EQ(NSNumber::numberWithDouble(1.9)->integerValue(), 1);
    EXPECT_EQ(NSNumber::numberWithFloat(2.5f)->longValue(), 2);
}

TEST_F(NSNumberTest, WrapsANegativeFractionToAnUnsignedTypeOnceTruncated)
{
    EXPECT_EQ(NSNumber::numberWithDouble(-1.9)->unsignedLongLongValue(), 18446744073709551615u);
    EXPECT_EQ(NSNumber::numberWithDouble(-0.9)->unsignedIntegerValue(), 0u);
    EXPECT_EQ(NSNumber::numberWithDouble(-5)->unsignedIntValue(), 4294967291u);
}

TEST_F(NSNumberTest, GivesTheNearestIntegerForAFloatOutOfRange)
{
    EXPECT_EQ(NSNumber::numberWithDouble(1e20)->longLongValue(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(
        NSNumber::numberWithDouble(1e20)->unsignedLongValue(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(NSNumber::numberWithDouble(-1e20)->integerValue(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(NSNumber::numberWithDouble(-1e20)->unsignedLongLongValue(), 0x8000'0000'0000'0000u);
    EXPECT_EQ(NSNumber::numberWithDouble(kInf)->charValue(), 127);
    EXPECT_EQ(NSNumber::numberWithDouble(3e9)->intValue(), 2147483647);
    EXPECT_EQ(NSNumber::numberWithDouble(1.8e19)->unsignedLongLongValue(), 18000000000000000000u);
}

TEST_F(NSNumberTest, GivesZeroForNotANumber)
{
    EXPECT_EQ(NSNumber::numberWithDouble(kNaN)->intValue(), 0);
    EXPECT_EQ(NSNumber::numberWithDouble(kNaN)->unsignedLongLongValue(), 0u);
}

TEST_F(NSNumberTest, RoundsAnIntegerToAFloatOnce)
{
    // By way of a double this would first become a tie between two floats, and then the upper one.
    EXPECT_EQ(NSNumber::numberWithLongLong(0x7fff'ffbf'ffff'ffff)->floatValue(), 9223371487098961920.0f);
    EXPECT_EQ(NSNumber::numberWithUnsignedLongLong(~0ULL)->doubleValue(), 18446744073709551616.0);
    EXPECT_EQ(NSNumber::numberWithUnsignedLongLong(~0ULL)->floatValue(), 18446744073709551616.0f);
}

TEST_F(NSNumberTest, WritesItselfPlainly)
{
    auto text = [](const NSRef<NSNumber>& number) { return number->stringValue()->utf8(); };
    EXPECT_EQ(text(true), "1");
    EXPECT_EQ(text(false), "0");
    EXPECT_EQ(text(-5), "-5");
    EXPECT_EQ(text(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(text(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(text(1.0), "1");
    EXPECT_EQ(text(0.1), "0.1");
    EXPECT_EQ(text(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(text(1.0f / 3), "0.3333333");
    EXPECT_EQ(text(1e20), "1e+20");
    EXPECT_EQ(text(-1.9), "-1.9");
    EXPECT_EQ(text(1e-7), "1e-07");
    EXPECT_EQ(text(123456789.0f), "1.234568e+08");
    EXPECT_EQ(text(-0.0), "-0");
    EXPECT_EQ(text(kInf), "inf");
    EXPECT_EQ(text(-kInf), "-inf");
    EXPECT_EQ(text(kNaN), "nan");
    EXPECT_EQ(text(-kNaN), "nan");
    EXPECT_EQ(NSNumber::numberWithDouble(2.5)->description()->utf8(), "2.5");
}

TEST_F(NSNumberTest, IsMadeOfEveryCppNumber)
{
    auto type = [](const NSRef<NSNumber>& number) { return std::string(number->objCType()); };
    EXPECT_EQ(type(true), "c");
    EXPECT_TRUE(NSRef<NSNumber>(true)->isBool());
    EXPECT_EQ(type('a'), "c");
    EXPECT_EQ(type(static_cast<unsigned char>(1)), "s");
    EXPECT_EQ(type(static_cast<short>(1)), "s");
    EXPECT_EQ(type(static_cast<unsigned short>(1)), "i");
    EXPECT_EQ(type(1), "i");
    EXPECT_EQ(type(0), "i"); // not a null reference
    EXPECT_EQ(type(1u), "q");
    EXPECT_EQ(type(1L), "q");
    EXPECT_EQ(type(1LL), "q");
    EXPECT_EQ(type(~0UL), "Q");
    EXPECT_EQ(type(1.0f), "f");
    EXPECT_EQ(type(1.0), "d");
}

TEST_F(NSNumberTest, IsItsOwnCopy)
{
    NSRef<NSNumber> number = 5;
    EXPECT_TRUE(number->copy() == number);
}

TEST_F(NSNumberTest, AnswersDynamicCalls)
{
    NSId number = 5;
    EXPECT_EQ(NSSend<double>(number, NSSelector("doubleValue")), 5.0);
    EXPECT_EQ(NSSend<NSInteger>(number, NSSelector("compare:"), NSId(6.5)), -1);
    EXPECT_THAT(NSSend<NSId>(number, NSSelector("stringValue")), Equals("5"));
    for (const char* reader :
        { "boolValue", "floatValue", "longLongValue", "unsignedLongValue", "unsignedLongLongValue" })
        EXPECT_TRUE(number->respondsToSelector(NSSelector(reader))) << reader;
}

}
