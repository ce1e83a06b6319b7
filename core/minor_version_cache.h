#pragma once

#include "core/system_version.h"

#include <atomic>

namespace lum {

/// The minor number of a system 10.x, asked for once.
///
/// No lock: whoever stores, stores the same number, and nothing else depends on it.
class MinorVersionCache {
public:
    /// -1 for any other system, which is not remembered.
    std::int32_t minorOf(const SystemVersion& system);

private:
    std::atomic<std::int32_t> mMinor { -1 };
};

}
