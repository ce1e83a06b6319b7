#include "core/system_clock.h"

#include <ctime>

namespace lum {

std::uint64_t uptimeNanoseconds() noexcept
{
    // CLOCK_BOOTTIME would count the time asleep as well, in which nothing of ours ran.
    timespec now {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000 + static_cast<std::uint64_t>(now.tv_nsec);
}

}
