#include "LUMPlatform/NSDate.h"

#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/raised_by.h"

#include <chrono>
#include <limits>

namespace {

NSRef<NSDate> at(double seconds)
{
    return NSDate::dateWithTimeIntervalSinceReferenceDate(seconds);
}

struct NSDateTest : ObjectTest { };

TEST_F(NSDateTest, CountsFromTheReferenceDate)
{
    EXPECT_EQ(at(1.5)->timeIntervalSinceReferenceDate(), 1.5);
    EXPECT_EQ(at(5)->timeIntervalSinceDate(at(7.5)), -2.5);
}

TEST_F(NSDateTest, TakesTheWallClock)
{
    auto now = [] {
        return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count()
            - 978307200;
    };
    const double before = now();
    const double date = NSDate::date()->timeIntervalSinceReferenceDate();
    EXPECT_LE(before, date);
    EXPECT_LE(date, now());
}

TEST_F(NSDateTest, ComparesByTime)
{
    EXPECT_EQ(at(1)->compare(at(2)), NSOrderedAscending);
    EXPECT_EQ(at(2)->compare(at(1)), NSOrderedDescending);
    EXPECT_EQ(at(2)->compare(at(2)), NSOrderedSame);
}

TEST_F(NSDateTest, IsEqualAtTheSameTime)
{
    EXPECT_TRUE(at(2)->isEqual(at(2)));
    EXPECT_TRUE(at(0.0)->isEqual(at(-0.0)));
    EXPECT_EQ(at(0.0)->hash(), at(-0.0)->hash());
    EXPECT_FALSE(at(2)->isEqual(at(2.001)));
    EXPECT_FALSE(at(2)->isEqual(2));
    EXPECT_FALSE(at(2)->isEqual(nullptr));
}

TEST_F(NSDateTest, RaisesForANullDate)
{
    EXPECT_EQ(nameRaisedBy([] { (void)at(1)->compare(nullptr); }), "NSInvalidArgumentException");
    EXPECT_EQ(
        nameRaisedBy([] { (void)at(1)->timeIntervalSinceDate(nullptr); }), "NSInvalidArgumentException");
}

TEST_F(NSDateTest, DescribesItselfInUTC)
{
    EXPECT_EQ(at(0)->description()->utf8(), "2001-01-01 00:00:00 +0000");
    EXPECT_EQ(at(-0.25)->description()->utf8(), "2000-12-31 23:59:59 +0000");
    EXPECT_EQ(at(86400.0 * 59 + 3661)->description()->utf8(), "2001-03-01 01:01:01 +0000");
    EXPECT_EQ(at(-978307200)->description()->utf8(), "1970-01-01 00:00:00 +0000");
    EXPECT_EQ(at(-86400.0 * 307)->description()->utf8(), "2000-02-29 00:00:00 +0000");
}

TEST_F(NSDateTest, DescribesDatesThatNoCalendarHas)
{
    EXPECT_EQ(at(1e300)->description()->utf8(), "<date out of range>");
    EXPECT_EQ(at(-std::numeric_limits<double>::infinity())->description()->utf8(), "<date out of range>");
    EXPECT_EQ(at(std::numeric_limits<double>::quiet_NaN())->description()->utf8(), "<date out of range>");
    EXPECT_EQ(at(8.9e11)->description()->utf8(), "30203-12-24 22:13:20 +0000");
}

TEST_F(NSDateTest, AnswersDynamicCalls)
{
    EXPECT_EQ(NSSend<double>(at(3), NSSelector("timeIntervalSinceReferenceDate")), 3.0);
    EXPECT_TRUE(at(3)->copy()->isEqual(at(3)));
}

}
