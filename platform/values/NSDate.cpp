#include "LUMPlatform/NSDate.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

#include <bit>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"timeIntervalSinceReferenceDate", &NSDate::timeIntervalSinceReferenceDate>(),
    NSMethodOf<"timeIntervalSinceDate:", &NSDate::timeIntervalSinceDate>(),
    NSMethodOf<"compare:", &NSDate::compare>(),
};

const NSDate& required(const NSRef<NSDate>& date, const char* operation)
{
    if (!date)
        throw NSException(NSInvalidArgumentException, std::string(operation) + " the other date is null");
    return *date;
}

}

const NSClass& NSDate::classObject()
{
    static const NSClass& type = NSClass::define("NSDate", &NSObject::classObject(), kMethods);
    return type;
}

NSDate::~NSDate() = default;

NSRef<NSDate> NSDate::date()
{
    using Seconds = std::chrono::duration<double>;
    const Seconds since1970 = std::chrono::system_clock::now().time_since_epoch();
    return NSMake<NSDate>(since1970.count() - NSTimeIntervalSince1970);
}

NSRef<NSDate> NSDate::dateWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds)
{
    return NSMake<NSDate>(seconds);
}

NSTimeInterval NSDate::timeIntervalSinceReferenceDate() const
{
    return mSeconds;
}

NSTimeInterval NSDate::timeIntervalSinceDate(const NSRef<NSDate>& other) const
{
    return mSeconds - required(other, "timeIntervalSinceDate:").mSeconds;
}

NSComparisonResult NSDate::compare(const NSRef<NSDate>& other) const
{
    const double others = required(other, "compare:").mSeconds;
    if (mSeconds < others)
        return NSOrderedAscending;
    return mSeconds > others ? NSOrderedDescending : NSOrderedSame;
}

bool NSDate::isEqual(const NSId& other) const
{
    auto date = NSCast<NSDate>(other);
    return date && (date->mSeconds == mSeconds || date.get() == this);
}

NSUInteger NSDate::hash() const
{
    return std::bit_cast<NSUInteger>(mSeconds + 0.0); // -0.0 and 0.0 are equal
}

NSRef<NSString> NSDate::description() const
{
    constexpr double kFarthest = 9e11; // the years of <chrono> end a little later
    if (!(std::abs(mSeconds) < kFarthest))
        return "<date out of range>";
    using namespace std::chrono;
    const sys_seconds time { seconds(static_cast<long>(std::floor(mSeconds + NSTimeIntervalSince1970))) };
    const auto midnight = floor<days>(time);
    const year_month_day day(midnight);
    const hh_mm_ss clock(time - midnight);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d +0000", static_cast<int>(day.year()),
        static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
        static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
        static_cast<int>(clock.seconds().count()));
    return text;
}

NSId NSDate::copy() const
{
    return NSShare(const_cast<NSDate*>(this));
}
