#pragma once

#include <cstdint>

namespace lum {

/// A length of time, without its sign, in the units of a clock.
struct ClockTime {
    std::uint32_t hours = 0;
    std::uint32_t minutes = 0;
    std::uint32_t seconds = 0;
    std::uint32_t hundredths = 0;
    float unrounded = 0; // seconds, as they were before anything was carried

    /// Takes apart the magnitude of `value`; keeps hundredths, or else rounds to whole seconds, half a second
    /// up. Whole seconds past 32 bits count as the most that fit, and not-a-number as 0.
    static ClockTime of(float value, bool keepsHundredths);
};

}
