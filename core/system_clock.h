#pragma once

#include <cstdint>

namespace lum {

/// Nanoseconds since the machine started, from a clock that never goes back.
std::uint64_t uptimeNanoseconds() noexcept;

/// A count of nanoseconds in seconds. The count is unsigned in all its 64 bits.
constexpr double secondsOfNanoseconds(std::uint64_t nanoseconds)
{
    return static_cast<double>(nanoseconds) / 1e9;
}

}
