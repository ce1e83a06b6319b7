#include "formatters/clock_time.h"

#include "LUMPlatform/NSArgument.h"

#include <cmath>

namespace lum {

ClockTime ClockTime::of(float value, bool keepsHundredths)
{
    // Deliberate: a negative time is rounded as its magnitude is, away from zero at the half.
    const float magnitude = std::fabs(value);
    const auto whole = NSSaturated<std::uint32_t>(static_cast<double>(magnitude));
    float fraction = magnitude - static_cast<float>(whole);
    if (!(fraction < 1.0F)) // of what was cut to 32 bits, or of not-a-number, there is none
        fraction = 0;

    ClockTime time;
    time.unrounded = fraction + static_cast<float>(whole);
    time.hours = whole / 3600;
    time.minutes = whole % 3600 / 60;
    time.seconds = whole % 60;
    time.hundredths = static_cast<std::uint32_t>(std::round(fraction * 100.0F));
    if (time.hundredths > 49 && !keepsHundredths)
        time.hundredths = 100;
    time.seconds += time.hundredths / 100;
    time.hundredths %= 100;
    time.minutes += time.seconds / 60;
    time.seconds %= 60;
    time.hours += time.minutes / 60;
    time.minutes %= 60;
    return time;
}

}
