#include "core/minor_version_cache.h"

namespace lum {

std::int32_t MinorVersionCache::minorOf(const SystemVersion& system)
{
    constexpr std::int32_t kMajor = 10;
    std::int32_t known = mMinor.load(std::memory_order_relaxed);
    if (known >= 0)
        return known;
    if (system.majorNumber() != kMajor)
        return -1;
    auto minor = system.minorNumber();
    if (!minor)
        return -1;
    mMinor.store(*minor, std::memory_order_relaxed);
    return *minor;
}

}
