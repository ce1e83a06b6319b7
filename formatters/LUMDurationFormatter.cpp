#include "LUMFoundation/LUMDurationFormatter.h"

#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSSend.h"
#include "formatters/clock_time.h"

namespace {

float numberOf(const NSId& value)
{
    static const NSSelector floatValue("floatValue");
    return value && value->respondsToSelector(floatValue) ? NSSend<float>(value, floatValue) : 0.0F;
}

const char* leadingZero(std::uint32_t number)
{
    return number <= 9 ? "0" : "";
}

}

LUMDurationFormatter::LUMDurationFormatter() : mSeparator(":") { }

LUMDurationFormatter::~LUMDurationFormatter() = default;

const NSClass& LUMDurationFormatter::classObject()
{
    static constexpr NSMethod kMethods[] = {
        NSMethodOf<"setAllowsOneZero:", &LUMDurationFormatter::setAllowsOneZero>(),
        NSMethodOf<"allowsOneZero", &LUMDurationFormatter::allowsOneZero>(),
        NSMethodOf<"setDisplaysZero:", &LUMDurationFormatter::setDisplaysZero>(),
        NSMethodOf<"displaysZero", &LUMDurationFormatter::displaysZero>(),
        NSMethodOf<"setAlwaysShowHours:", &LUMDurationFormatter::setAlwaysShowHours>(),
        NSMethodOf<"alwaysShowHours", &LUMDurationFormatter::alwaysShowHours>(),
        NSMethodOf<"setAlwaysShowMinutes:", &LUMDurationFormatter::setAlwaysShowMinutes>(),
        NSMethodOf<"alwaysShowMinutes", &LUMDurationFormatter::alwaysShowMinutes>(),
        NSMethodOf<"setIncludeMilliseconds:", &LUMDurationFormatter::setIncludeMilliseconds>(),
        NSMethodOf<"includeMilliseconds", &LUMDurationFormatter::includeMilliseconds>(),
        NSMethodOf<"setShowsLastUnitLabel:", &LUMDurationFormatter::setShowsLastUnitLabel>(),
        NSMethodOf<"showsLastUnitLabel", &LUMDurationFormatter::showsLastUnitLabel>(),
        NSMethodOf<"setSeparator:", &LUMDurationFormatter::setSeparator>(),
        NSMethodOf<"separator", &LUMDurationFormatter::separator>(),
    };
    static const NSClass& type =
        NSClass::define("LUMDurationFormatter", &NSFormatter::classObject(), kMethods);
    return type;
}

void LUMDurationFormatter::setAllowsOneZero(bool allows)
{
    mAllowsOneZero = allows;
}
bool LUMDurationFormatter::allowsOneZero() const
{
    return mAllowsOneZero;
}

void LUMDurationFormatter::setDisplaysZero(bool displays)
{
    mDisplaysZero = displays;
}
bool LUMDurationFormatter::displaysZero() const
{
    return mDisplaysZero;
}

void LUMDurationFormatter::setAlwaysShowHours(bool shows)
{
    mAlwaysShowHours = shows;
}
bool LUMDurationFormatter::alwaysShowHours() const
{
    return mAlwaysShowHours;
}

void LUMDurationFormatter::setAlwaysShowMinutes(bool shows)
{
    mAlwaysShowMinutes = shows;
}
bool LUMDurationFormatter::alwaysShowMinutes() const
{
    return mAlwaysShowMinutes;
}

void LUMDurationFormatter::setIncludeMilliseconds(bool includes)
{
    mIncludeMilliseconds = includes;
}
bool LUMDurationFormatter::includeMilliseconds() const
{
    return mIncludeMilliseconds;
}

void LUMDurationFormatter::setShowsLastUnitLabel(bool shows)
{
    mShowsLastUnitLabel = shows;
}
bool LUMDurationFormatter::showsLastUnitLabel() const
{
    return mShowsLastUnitLabel;
}

void LUMDurationFormatter::setSeparator(const NSRef<NSString>& separator)
{
    mSeparator = separator ? NSCast<NSString>(separator->copy()) : nullptr;
}

NSRef<NSString> LUMDurationFormatter::separator() const
{
    return mSeparator;
}

NSRef<NSString> LUMDurationFormatter::stringForObjectValue(const NSId& value) const
{
    const auto time = lum::ClockTime::of(numberOf(value), includeMilliseconds());
    auto text = NSMutableString::string();
    if (numberOf(value) < 0.0F)
        text->appendString("-");
    // Deliberate: the hours depend on the time before rounding, so 3599.5 shows 00:00, a full hour unseen.
    if (time.unrounded >= 3600.0F || alwaysShowHours())
        text->appendFormat("%u%@", time.hours, separator());
    const bool bareMinutes = time.hours == 0 && allowsOneZero();
    text->appendFormat("%s%u%@", bareMinutes ? "" : leadingZero(time.minutes), time.minutes, separator());
    text->appendFormat("%s%u", leadingZero(time.seconds), time.seconds);
    // Deliberate: what is called milliseconds are hundredths, and no unit stands behind them. The minutes are
    // always shown, whatever alwaysShowMinutes says.
    if (includeMilliseconds())
        text->appendFormat(".%s%u", leadingZero(time.hundredths), time.hundredths);
    else if (showsLastUnitLabel())
        text->appendString("s");
    if (!displaysZero()) {
        // Deliberate: each test reads the number anew, so a value that changes meanwhile is judged by what it
        // says then.
        const float low = numberOf(value);
        const float high = numberOf(value);
        if (low == 0.0F && high == 0.0F)
            return nullptr;
    }
    return text;
}
