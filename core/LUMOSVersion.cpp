#include "LUMFoundation/LUMOSVersion.h"

#include "core/minor_version_cache.h"

std::int32_t LUMOSVersion()
{
    static constinit lum::MinorVersionCache cache;
    return cache.minorOf(lum::systemVersion());
}
