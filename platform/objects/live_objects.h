#pragma once

#include "LUMPlatform/NSObject.h"

namespace platform {

/// How many objects exist now. Always 0 unless built with NS_COUNT_OBJECTS, as the checking presets do.
NS_EXPORT long liveObjectCount() noexcept;

/// Takes an object out of that count: a constant that lives as long as the process is no leak.
NS_EXPORT void discountLiveObject() noexcept;

/// Keeps an object for the rest of the process.
template<typename T> T* makeImmortal(NSRef<T> object) noexcept
{
    if (object)
        discountLiveObject();
    return object.leak();
}

}
