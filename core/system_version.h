#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

namespace lum {

/// The system's record of its own version; a number that cannot be had is none.
class SystemVersion {
public:
    virtual std::optional<std::int32_t> majorNumber() const = 0;
    virtual std::optional<std::int32_t> minorNumber() const = 0;

protected:
    ~SystemVersion() = default;
};

/// That of the running system.
const SystemVersion& systemVersion();

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
