#pragma once

#include <atomic>

namespace platform {

/// Counts objects in builds that check for leaks; costs nothing in the others.
struct LiveObjectCounter {
#ifdef NS_COUNT_OBJECTS
    static void began() noexcept
    {
        sCount.fetch_add(1, std::memory_order_relaxed);
    }
    static void ended() noexcept
    {
        sCount.fetch_sub(1, std::memory_order_release);
    }
#else
    static void began() noexcept { }
    static void ended() noexcept { }
#endif
    static std::atomic<long> sCount;
};

}
